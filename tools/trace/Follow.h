// Reads a trace's log while it is being written.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "recorder/TraceReader.h"

namespace tools {

class LogFollower {
 public:
  enum class From { Start, End };
  // From the end: calls whose lines the log does not hold yet.
  LogFollower(const std::filesystem::path& folder, From from);

  // The next whole line; nothing when there is none now. A place in the log that was handed out and
  // is not written yet holds back what stands behind it, for a while: its process may have died. A
  // log that became shorter was begun anew.
  std::optional<quillmar::recorder::TracedCall> Next();

 private:
  // Reads the log again from the first line that was not taken: places that were empty may be
  // filled by now.
  void ReadOn();
  // The next whole line without its end, taken from what was read.
  std::optional<std::string_view> TakeLine();
  // False: wait for the place in front.
  bool SkipEmptyPlace();

  std::filesystem::path file;
  std::uintmax_t place = 0;  // of the log: where `block` begins
  std::string block;
  std::size_t taken = 0;                                       // of the block
  std::uintmax_t waitingAt = static_cast<std::uintmax_t>(-1);  // the empty place that is waited for
  std::chrono::steady_clock::time_point waitingSince{};
};

}  // namespace tools
