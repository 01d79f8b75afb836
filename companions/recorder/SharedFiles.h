// What the recorder needs of the operating system: the trace folder of the machine, memory and a
// log that several processes share, and names of the process's modules. One backend a target; it
// does without the platform layer, which itself stands on a side of the recorded borders.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar::recorder {

// "C:\Vantorel\Trace" of the machine that the module holding this code belongs to; nothing for a
// module outside an image. The folder need not exist.
std::optional<std::filesystem::path> TraceFolderOfThisModule();

// Microseconds of the system clock.
std::int64_t ClockMicroseconds();
std::uint32_t ThisProcess();

// File name without extension of the module whose code holds an address, "?" when there is none.
// The address is a return address on this thread's stack: for one in the platform layer the module
// that called the layer is named.
std::string ModuleNameAt(const void* address);

// An existing file in memory, shared with every process that maps it.
class SharedMemory {
 public:
  SharedMemory() = default;
  SharedMemory(const std::filesystem::path& file, std::size_t size);
  SharedMemory(SharedMemory&& other) noexcept;
  SharedMemory& operator=(SharedMemory&& other) noexcept;
  ~SharedMemory();

  // Null when the file is missing or shorter than `size`.
  void* Get() const { return memory; }

 private:
  void* memory = nullptr;
  std::size_t size = 0;
};

// A file written at given places by several processes at the same time.
class SharedLog {
 public:
  SharedLog() = default;
  explicit SharedLog(const std::filesystem::path& file);
  SharedLog(SharedLog&& other) noexcept;
  SharedLog& operator=(SharedLog&& other) noexcept;
  ~SharedLog();

  // Makes the file when it is missing. What cannot be written is lost, silently: a full disk must
  // not change what the recorded program does.
  void WriteAt(std::uint32_t offset, std::string_view text);

 private:
  std::intptr_t handle = -1;
};

}  // namespace quillmar::recorder
