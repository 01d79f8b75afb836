#include "recorder/SharedFiles.h"

#include <windows.h>

#include <utility>

namespace quillmar::recorder {
namespace {

// 100-nanosecond steps from 1601 to 1970.
constexpr std::int64_t kUnixEpoch = 116444736000000000;

using ReadTime = void(WINAPI*)(FILETIME*);

// The clock that is exact to the microsecond is younger than the oldest Windows we run on.
ReadTime FindClock() {
  const auto precise =
      GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetSystemTimePreciseAsFileTime");
  if (precise == nullptr) return &GetSystemTimeAsFileTime;
  return reinterpret_cast<ReadTime>(reinterpret_cast<void*>(precise));
}

}  // namespace

std::optional<std::filesystem::path> TraceFolderOfThisModule() {
  return std::filesystem::path("C:\\Vantorel\\Trace");
}

std::int64_t ClockMicroseconds() {
  static const ReadTime readTime = FindClock();
  FILETIME time;
  readTime(&time);
  const auto ticks = (static_cast<std::int64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  return (ticks - kUnixEpoch) / 10;
}

std::uint32_t ThisProcess() { return GetCurrentProcessId(); }

std::string ModuleNameAt(const void* address) {
  HMODULE module = nullptr;
  char path[MAX_PATH];
  constexpr DWORD flags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExA(flags, static_cast<LPCSTR>(address), &module)) return "?";
  if (GetModuleFileNameA(module, path, sizeof path) == 0) return "?";
  return std::filesystem::path(path).stem().string();
}

SharedMemory::SharedMemory(const std::filesystem::path& file, std::size_t size) : size(size) {
  const HANDLE opened = CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return;
  LARGE_INTEGER length;
  if (GetFileSizeEx(opened, &length) && length.QuadPart >= static_cast<LONGLONG>(size)) {
    const HANDLE mapping = CreateFileMappingW(opened, nullptr, PAGE_READWRITE, 0, 0, nullptr);
    if (mapping != nullptr) {
      memory = MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, size);
      CloseHandle(mapping);
    }
  }
  CloseHandle(opened);
}

SharedMemory::SharedMemory(SharedMemory&& other) noexcept
    : memory(std::exchange(other.memory, nullptr)), size(other.size) {}

SharedMemory& SharedMemory::operator=(SharedMemory&& other) noexcept {
  std::swap(memory, other.memory);
  std::swap(size, other.size);
  return *this;
}

SharedMemory::~SharedMemory() {
  if (memory != nullptr) UnmapViewOfFile(memory);
}

SharedLog::SharedLog(const std::filesystem::path& file)
    : handle(reinterpret_cast<std::intptr_t>(CreateFileW(
          file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
          nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

SharedLog::SharedLog(SharedLog&& other) noexcept : handle(std::exchange(other.handle, -1)) {}

SharedLog& SharedLog::operator=(SharedLog&& other) noexcept {
  std::swap(handle, other.handle);
  return *this;
}

SharedLog::~SharedLog() {
  if (handle != -1) CloseHandle(reinterpret_cast<HANDLE>(handle));
}

void SharedLog::WriteAt(std::uint32_t offset, std::string_view text) {
  if (handle == -1) return;
  OVERLAPPED place{};
  place.Offset = offset;
  DWORD written = 0;
  WriteFile(reinterpret_cast<HANDLE>(handle), text.data(), static_cast<DWORD>(text.size()),
            &written, &place);
}

}  // namespace quillmar::recorder
