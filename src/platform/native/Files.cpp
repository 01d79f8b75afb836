#include "platform/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/native/Machine.h"

namespace quillmar::platform {
namespace {

bool EndsWithSeparator(const std::string& path) {
  return path.back() == '\\' || path.back() == '/';
}

bool GetStatus(const std::string& path, struct stat& status) {
  if (path.empty()) return false;
  if (stat(Machine::Current().HostPath(path).c_str(), &status) != 0) return false;
  return S_ISDIR(status.st_mode) || !EndsWithSeparator(path);
}

}  // namespace

bool FileExists(const std::string& path) {
  struct stat status {};
  return GetStatus(path, status);
}

bool RemoveFile(const std::string& path) {
  struct stat status {};
  if (!GetStatus(path, status) || S_ISDIR(status.st_mode)) return false;
  // A file that may not be written cannot be deleted on Windows, whoever asks.
  if ((status.st_mode & 0222) == 0) return false;
  return unlink(Machine::Current().HostPath(path).c_str()) == 0;
}

std::string ShortPathName(const std::string& path) { return path; }

}  // namespace quillmar::platform
