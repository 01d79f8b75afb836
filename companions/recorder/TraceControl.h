// Makes a trace and steers it from a test or a tool, while the processes that are recorded run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "recorder/Recorder.h"
#include "recorder/Trace.h"

namespace quillmar::recorder {

// Which calls fail: the one that was asked for, or it and all that follow.
enum class FaultMode { Once, FromThenOn };

class TraceControl {
 public:
  // Characters of a text that a new trace shows.
  static constexpr std::uint32_t kDefaultTextLimit = 160;

  // Makes the folder with an empty trace, or takes over the one that is there. Must be done before
  // the companions are loaded. Throws std::runtime_error when it cannot be made.
  explicit TraceControl(const std::filesystem::path& folder);

  // The trace folder of an image ("<image>/drive_c/Vantorel/Trace").
  static std::filesystem::path FolderOfImage(const std::filesystem::path& image);

  // Empties the log, sets all counters to 0 and the fault off; recording and counting stay as
  // they are. No recorded call may be under way.
  void Reset();

  void Record(bool on);
  // 0: whole texts, as a replay of the calls needs them.
  void SetTextLimit(std::uint32_t characters);

  // Counts calls of these kinds (Kind bits, 0: none) from now on, from 1; with a `caller` only
  // those that this module makes ("Quillmar").
  void Count(std::uint32_t kinds, const std::string& caller = {});
  std::uint32_t CountedCalls();

  // The counted call of that number fails; 0: none.
  void SetFault(std::uint32_t number, FaultMode mode = FaultMode::Once);
  // Calls that were made to fail so far.
  std::uint32_t FailedCalls();

 private:
  ControlBlock& Control() { return trace.Control(); }

  std::filesystem::path folder;
  Trace trace;
};

}  // namespace quillmar::recorder
