// The trace that a process is attached to: the mapped control block and the log.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>

#include "recorder/ControlBlock.h"
#include "recorder/SharedFiles.h"

namespace quillmar::recorder {

inline std::atomic_ref<std::uint32_t> Shared(std::uint32_t& field) {
  return std::atomic_ref<std::uint32_t>(field);
}

class Trace {
 public:
  // Nothing when the folder holds no control block of this version.
  static std::optional<Trace> Open(const std::filesystem::path& folder);

  ControlBlock& Control() { return *static_cast<ControlBlock*>(memory.Get()); }
  std::int64_t Start();
  SharedLog& Log() { return log; }

 private:
  Trace(SharedMemory memory, SharedLog log) : memory(std::move(memory)), log(std::move(log)) {}

  SharedMemory memory;
  SharedLog log;
};

}  // namespace quillmar::recorder
