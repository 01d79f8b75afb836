#include "keelcomm/HostSystem.h"

#include <windows.h>

namespace quillmar::keelcomm {
namespace {

std::int64_t BirthOf(HANDLE process) {
  FILETIME birth, exit, kernel, user;
  if (!GetProcessTimes(process, &birth, &exit, &kernel, &user)) return 0;
  return (static_cast<std::int64_t>(birth.dwHighDateTime) << 32) | birth.dwLowDateTime;
}

}  // namespace

ProcessIdentity ThisProcess() {
  return {static_cast<std::int64_t>(GetCurrentProcessId()), BirthOf(GetCurrentProcess())};
}

bool IsAlive(const ProcessIdentity& process) {
  const HANDLE opened = OpenProcess(PROCESS_QUERY_INFORMATION | SYNCHRONIZE, FALSE,
                                    static_cast<DWORD>(process.number));
  if (opened == nullptr) return false;
  const bool alive =
      BirthOf(opened) == process.birth && WaitForSingleObject(opened, 0) == WAIT_TIMEOUT;
  CloseHandle(opened);
  return alive;
}

std::string DatabaseName(const std::string& windowsPath) {
  const int wideLength = MultiByteToWideChar(CP_ACP, 0, windowsPath.c_str(), -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(wideLength), L'\0');
  MultiByteToWideChar(CP_ACP, 0, windowsPath.c_str(), -1, wide.data(), wideLength);
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  if (length <= 0) return windowsPath;
  std::string name(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), -1, name.data(), length, nullptr, nullptr);
  name.pop_back();  // the NUL
  return name;
}

}  // namespace quillmar::keelcomm
