// Windows paths of the machine and the host's files that they name.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillmar::platform {

class Paths {
 public:
  // `root` holds drive_c, drive_d ...
  explicit Paths(const std::filesystem::path& root);

  const std::filesystem::path& Root() const { return root; }

  // The host's path of a Windows path. Parts match existing names without regard to case, an
  // exact match first; parts that do not exist are appended as written. A path without a drive is
  // taken from the current folder, or from its drive's root when it begins with a backslash.
  std::filesystem::path ToHost(std::string_view windowsPath) const;

  // Whether that is the host's path of a Windows path letter by letter, whatever else there is and
  // wherever the current folder is.
  bool NamesExactly(std::string_view windowsPath, const std::filesystem::path& hostPath) const;

  // The Windows path of a host path below the root; empty when it is not below it.
  std::string ToWindows(const std::filesystem::path& hostPath) const;

 private:
  std::filesystem::path DriveFolder(char letter) const;

  std::filesystem::path root;
};

// "<folder>\<name>", also when the folder already ends with a backslash.
std::string JoinPath(const std::string& folder, const std::string& name);

// The part of a Windows path behind the last separator, and the part before it.
std::string FileNameOf(const std::string& path);
std::string FolderOf(const std::string& path);

}  // namespace quillmar::platform
