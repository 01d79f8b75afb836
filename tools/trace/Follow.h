// Reads a trace's log while it is being written.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "recorder/TraceReader.h"

namespace tools {

class LogFollower {
 public:
  explicit LogFollower(const std::filesystem::path& folder);

  // Whole lines that came since the last call. A place in the log that was handed out and is not
  // written yet holds back what stands behind it, for a while: its process may have died. A log
  // that became shorter was begun anew.
  std::vector<quillmar::recorder::TracedCall> Take();

 private:
  void ReadNew();
  // False: wait for the place in front.
  bool SkipEmptyPlace();

  std::filesystem::path file;
  std::uintmax_t place = 0;  // bytes of the log that were read
  std::string unread;
  std::chrono::steady_clock::time_point waitingSince{};
  bool waits = false;
};

}  // namespace tools
