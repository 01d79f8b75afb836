#include "platform/native/Paths.h"

#include <dirent.h>

#include <algorithm>
#include <memory>
#include <system_error>
#include <vector>

#include "platform/native/CodePage.h"

namespace quillmar::platform {
namespace {

constexpr std::string_view kSeparators = "\\/";
constexpr std::string_view kDrivePrefix = "drive_";
constexpr char kDefaultDrive = 'c';

bool IsLetter(char character) {
  char lower = LowerCharacter(character);
  return lower >= 'a' && lower <= 'z';
}

bool HasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' && IsLetter(path[0]);
}

// Appends the parts of `path`; ".." takes the last one away again.
void AppendParts(std::string_view path, std::vector<std::string>& parts) {
  while (!path.empty()) {
    std::size_t end = std::min(path.find_first_of(kSeparators), path.size());
    std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.emplace_back(part);
    }
  }
}

bool Exists(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};

// The entry of `folder` that matches `name` without regard to case: the first in alphabetical
// order when there are several, none when there is none. The standard library's iterator would end
// the process when memory runs out.
std::filesystem::path FindEntry(const std::filesystem::path& folder, const std::u16string& name) {
  std::u16string wanted = Fold(name);
  std::filesystem::path found;
  const std::unique_ptr<DIR, CloseDirectory> entries(::opendir(folder.c_str()));
  while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
    std::filesystem::path candidate = entry->d_name;
    if (Fold(FromUtf8(candidate.native())) == wanted && (found.empty() || candidate < found)) {
      found = candidate;
    }
  }
  return found;
}

std::filesystem::path Appended(std::filesystem::path path, const std::vector<std::string>& parts) {
  for (const std::string& part : parts) path /= ToUtf8(Widen(part));
  return path;
}

std::filesystem::path Resolve(std::filesystem::path path, const std::vector<std::string>& parts) {
  std::filesystem::path exact = Appended(path, parts);
  if (Exists(exact)) return exact;
  for (const std::string& part : parts) {
    std::u16string name = Widen(part);
    std::filesystem::path next = path / ToUtf8(name);
    if (!Exists(next)) {
      std::filesystem::path entry = FindEntry(path, name);
      if (!entry.empty()) next = path / entry;
    }
    path = next;
  }
  return path;
}

}  // namespace

Paths::Paths(const std::filesystem::path& machineRoot) {
  std::error_code error;
  root = std::filesystem::weakly_canonical(std::filesystem::absolute(machineRoot, error), error);
  if (error || root.empty()) root = machineRoot;
}

std::filesystem::path Paths::DriveFolder(char letter) const {
  return root / (std::string(kDrivePrefix) + letter);
}

bool Paths::NamesExactly(std::string_view windowsPath,
                         const std::filesystem::path& hostPath) const {
  if (!HasDrive(windowsPath)) return false;
  std::vector<std::string> parts;
  AppendParts(windowsPath.substr(2), parts);
  return hostPath == Appended(DriveFolder(LowerCharacter(windowsPath[0])), parts);
}

std::filesystem::path Paths::ToHost(std::string_view windowsPath) const {
  windowsPath = windowsPath.substr(0, windowsPath.find('\0'));
  char drive = kDefaultDrive;
  std::vector<std::string> parts;
  if (HasDrive(windowsPath)) {
    drive = LowerCharacter(windowsPath[0]);
    windowsPath.remove_prefix(2);
  } else if (windowsPath.find_first_of(kSeparators) != 0) {
    std::error_code error;
    std::string current = ToWindows(std::filesystem::current_path(error));
    if (HasDrive(current)) {
      drive = LowerCharacter(current[0]);
      AppendParts(std::string_view(current).substr(2), parts);
    }
  }
  AppendParts(windowsPath, parts);
  return Resolve(DriveFolder(drive), parts);
}

std::string Paths::ToWindows(const std::filesystem::path& hostPath) const {
  std::error_code error;
  std::filesystem::path whole = std::filesystem::weakly_canonical(hostPath, error);
  if (error || hostPath.empty()) return {};
  std::filesystem::path relative = whole.lexically_relative(root);
  auto part = relative.begin();
  if (part == relative.end()) return {};
  std::string drive = part->native();
  if (drive.size() != kDrivePrefix.size() + 1 ||
      drive.compare(0, kDrivePrefix.size(), kDrivePrefix) != 0) {
    return {};
  }
  std::string path = {UpperCharacter(drive.back()), ':', '\\'};
  for (++part; part != relative.end(); ++part) {
    path = JoinPath(path, Narrow(FromUtf8(part->native())));
  }
  return path;
}

std::string JoinPath(const std::string& folder, const std::string& name) {
  if (folder.empty()) return name;
  bool closed = kSeparators.find(folder.back()) != std::string_view::npos;
  return closed ? folder + name : folder + "\\" + name;
}

std::string FileNameOf(const std::string& path) {
  std::size_t last = path.find_last_of(kSeparators);
  return last == std::string::npos ? path : path.substr(last + 1);
}

std::string FolderOf(const std::string& path) {
  std::size_t last = path.find_last_of(kSeparators);
  return last == std::string::npos ? std::string() : path.substr(0, last);
}

}  // namespace quillmar::platform
