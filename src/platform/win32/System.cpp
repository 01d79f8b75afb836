#include "platform/System.h"

#include "platform/win32/Win32.h"

#include <shlobj.h>

namespace quillmar::platform {
namespace {

// How often another name is tried for a temporary file.
constexpr unsigned kTempFileTries = 0x10000;

std::string WithoutTrailingBackslash(std::string folder) {
  if (folder.ends_with('\\')) folder.pop_back();
  return folder;
}

// Creates the file unless it exists; the error of the system, 0 when it was made.
DWORD CreateNewFile(const std::string& path) {
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  CloseHandle(file);
  return 0;
}

std::string Hexadecimal(unsigned number) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  do {
    text.insert(text.begin(), kDigits[number % 16]);
    number /= 16;
  } while (number != 0);
  return text;
}

}  // namespace

std::uint32_t TickCount() { return GetTickCount(); }

std::uint32_t VolumeSerial(const std::string& drive) {
  DWORD serial = 0;
  if (GetVolumeInformationA(drive.c_str(), nullptr, 0, &serial, nullptr, nullptr, nullptr, 0) ==
      0) {
    return 0;
  }
  return serial;
}

std::string TempFolder() {
  return WithoutTrailingBackslash(
      win32::GrowingText([](char* buffer, DWORD size) { return GetTempPathA(size, buffer); }));
}

std::string DocumentsFolder() {
  char path[MAX_PATH] = "";
  if (SHGetFolderPathA(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK)
    return {};
  return WithoutTrailingBackslash(path);
}

std::string WindowsFolder() {
  return WithoutTrailingBackslash(win32::GrowingText(GetWindowsDirectoryA));
}

std::string MakeTempFile(const std::string& folder, const std::string& prefix,
                         const std::string& extension) {
  const unsigned start = GetTickCount() ^ (GetCurrentProcessId() << 16);
  const std::string stem = folder + "\\" + prefix;
  for (unsigned tried = 0; tried < kTempFileTries; ++tried) {
    std::string path = stem;
    path.append(Hexadecimal(start + tried)).append(".").append(extension);
    const DWORD error = CreateNewFile(path);
    if (error == 0) return path;
    if (error != ERROR_FILE_EXISTS) break;
  }
  return {};
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
  return upper;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
  return lower;
}

bool EqualsNoCase(std::string_view left, std::string_view right) {
  return left.size() == right.size() && UpperCase(left) == UpperCase(right);
}

void DebugOutput(const std::string& text) { OutputDebugStringA(text.c_str()); }

}  // namespace quillmar::platform
