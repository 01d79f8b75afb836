// Reads the log of a trace: what tests compare and tools show.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar::recorder {

struct TracedCall {
  std::uint32_t number = 0;
  std::int64_t microseconds = 0;  // since the trace began
  std::uint32_t process = 0;
  std::string from;
  std::string to;
  std::string function;
  std::vector<std::string> arguments;  // as they stand in the log
  std::string result;                  // as it stands in the log
  std::int64_t duration = 0;           // microseconds

  // "function(arguments) = result".
  std::string Summary() const;
};

class TraceReader {
 public:
  explicit TraceReader(const std::filesystem::path& folder) : folder(folder) {}

  // All calls that have ended, in the order in which they began. Lines that a killed process left
  // unfinished are passed over.
  std::vector<TracedCall> Read() const;

 private:
  std::filesystem::path folder;
};

// One line of a log, without its line end; nothing when it is not whole.
std::optional<TracedCall> ParseTraceLine(std::string_view line);

// The text that an argument or result stands for ("&" before it is passed over); nothing when it is
// no text or was cut.
std::optional<std::string> TextOfArgument(std::string_view argument);

}  // namespace quillmar::recorder
