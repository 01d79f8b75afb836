#include "platform/Profile.h"

#include <algorithm>
#include <cstring>

#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

// No file has this name.
constexpr const char* kNoFile = "\\?";

// Some systems put a name behind their Windows folder without looking at its length.
bool IsTooLong(const std::string& file) {
  const bool hasFolder = file.find('\\') != std::string::npos;
  const UINT folder = hasFolder ? 0 : GetWindowsDirectoryA(nullptr, 0) + 1;
  return file.size() + folder >= MAX_PATH;
}

}  // namespace

std::size_t GetProfileText(const std::string& file, const char* section, const char* key,
                           const char* fallback, char* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return 0;
  // The system may leave the second NUL of a truncated list unwritten.
  std::memset(buffer, 0, size);
  const DWORD length =
      GetPrivateProfileStringA(section, key, fallback, buffer, static_cast<DWORD>(size),
                               IsTooLong(file) ? kNoFile : file.c_str());
  return std::min<std::size_t>(length, size - 1);
}

bool WriteProfileText(const std::string& file, const char* section, const char* key,
                      const char* value) {
  // Without a section the call would mean something else: empty the system's cache.
  return section != nullptr && !IsTooLong(file) &&
         WritePrivateProfileStringA(section, key, value, file.c_str()) != 0;
}

}  // namespace quillmar::platform
