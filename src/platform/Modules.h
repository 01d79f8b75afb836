// Libraries of the process and functions found in them by name.
#pragma once

#include <cstdint>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

// The module of that file name if it is loaded in this process, else null. No reference is taken.
QmModule FindLoadedModule(const std::string& name);

// Full path of the module's file; empty when unknown. Null means the program itself.
std::string ModulePath(QmModule module);

// Address of an exported function, null when the module does not export the name.
void* FindFunction(QmModule module, const char* name);

// A library that this object loaded and frees again.
class Library {
 public:
  Library() = default;
  explicit Library(QmModule loaded) : module(loaded) {}
  Library(Library&& other) noexcept : module(other.Release()) {}
  Library& operator=(Library&& other) noexcept;
  ~Library() { Free(); }

  explicit operator bool() const { return module != nullptr; }
  QmModule Get() const { return module; }
  void Free();
  // Gives the handle away without freeing it: for a process that is ending.
  QmModule Release();

 private:
  QmModule module = nullptr;
};

struct LoadResult {
  Library library;
  std::uint32_t error = 0;  // the system's error code of the last try, 0 after a success
};

// Loads a library by its full path. Search settings of the process are not changed.
LoadResult LoadLibraryAt(const std::string& path);

// Loads a library by its file name from the application's, the system's, the Windows and the
// PATH folders, each tried by full path, in this order. The current folder is never looked at.
LoadResult LoadLibraryFromSystem(const std::string& fileName);

}  // namespace quillmar::platform
