// Who called whom, when, with what result: the calls that the recorder wrote down and the session's
// own calls of the module, in the order in which they began.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "recorder/TraceControl.h"
#include "recorder/TraceReader.h"

namespace session {

class Timeline {
 public:
  // Begins a new trace. Must be made before any companion is loaded.
  explicit Timeline(const std::filesystem::path& traceFolder);

  // Begins a step of the session, under which the calls that follow are shown.
  void Title(const std::string& text);

  // Runs a call of the module and notes it. `arguments` are for people.
  template <typename Operation>
  int Call(const char* function, const std::string& arguments, Operation operation) {
    const std::size_t place = Begin(function, arguments);
    const int result = operation();
    End(place, std::to_string(result));
    return result;
  }

  // All calls in the order in which they began, and the time since the session began in
  // microseconds.
  std::vector<quillmar::recorder::TracedCall> Calls() const;
  std::int64_t Now() const;

  // The lines, each with its line end. Unless `all` is set, calls of the stores one after the
  // other are told in one line.
  std::string Text(bool all, std::size_t width) const;

 private:
  std::size_t Begin(const char* function, const std::string& arguments);
  void End(std::size_t place, const std::string& result);

  quillmar::recorder::TraceControl control;
  quillmar::recorder::TraceReader reader;
  std::chrono::system_clock::time_point start;
  std::vector<quillmar::recorder::TracedCall> own;
  std::vector<std::pair<std::int64_t, std::string>> titles;  // when each step began
};

}  // namespace session
