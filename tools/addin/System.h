// Libraries and child processes of the system, by its own paths. Two backends, chosen by the build.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace tools {

// Loads a library and keeps it; null, with the system's reason in `reason`, when that fails.
void* LoadAddin(const std::string& path, std::string& reason);
// Null when the library itself does not export the name.
void* FindExport(void* library, const std::string& name);

// A machine on which a session leaves no traces: a copy of an image, gone with the object. On
// Windows it is the machine itself. Throws a ToolError when there is no such image.
class MachineCopy {
 public:
  explicit MachineCopy(const std::string& image);
  ~MachineCopy();
  MachineCopy(const MachineCopy&) = delete;
  MachineCopy& operator=(const MachineCopy&) = delete;

  const std::string& Image() const { return image; }

 private:
  std::string image;
};

// For a process that may crash: no dialog, no dump.
void CrashQuietly();

struct ChildEnd {
  std::string output;  // what it wrote to standard output
  std::string reason;  // of a bad end: "crashed (...)", "did not return within 10 s"; else empty
};

// Runs this program again with other arguments. Its error output is dropped.
ChildEnd RunChild(const std::vector<std::string>& arguments, std::chrono::seconds limit);

}  // namespace tools
