#include "platform/Files.h"

#include "platform/win32/Win32.h"

namespace quillmar::platform {

namespace win32 {

bool IsFullPath(const std::string& path) {
  const auto isSeparator = [&](std::size_t at) { return path[at] == '\\' || path[at] == '/'; };
  if (path.size() < 3) return false;
  return (path[1] == ':' && isSeparator(2)) || (isSeparator(0) && isSeparator(1));
}

}  // namespace win32

bool FileExists(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool RemoveFile(const std::string& path) { return DeleteFileA(path.c_str()) != 0; }

std::string ShortPathName(const std::string& path) {
  const std::string shortPath = win32::GrowingText(
      [&](char* buffer, DWORD size) { return GetShortPathNameA(path.c_str(), buffer, size); });
  return shortPath.empty() ? path : shortPath;
}

}  // namespace quillmar::platform
