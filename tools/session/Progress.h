// One line on the terminal that says what a session is busy with. Nothing where there is no
// terminal.
#pragma once

#include <chrono>
#include <string>

namespace session {

class Progress {
 public:
  explicit Progress(bool shown) : shown(shown) {}
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(std::size_t step, std::size_t count, const std::string& title);
  // Before something else is printed.
  void Clear();

 private:
  bool shown;
  bool visible = false;
  std::size_t current = 0;
  std::chrono::steady_clock::time_point began{};  // the current step
  std::chrono::steady_clock::time_point drawn{};
};

}  // namespace session
