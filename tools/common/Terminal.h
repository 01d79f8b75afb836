// What a terminal gets and a file or pipe does not: colours and progress bars.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "common/Place.h"

namespace tools {

// Colours for one stream; texts as they are when it is no terminal.
class Style {
 public:
  explicit Style(bool colours) : colours(colours) {}
  std::string Good(const std::string& text) const { return Painted("32", text); }
  std::string Bad(const std::string& text) const { return Painted("1;31", text); }
  std::string Warning(const std::string& text) const { return Painted("33", text); }
  std::string Heading(const std::string& text) const { return Painted("1;36", text); }
  std::string Weak(const std::string& text) const { return Painted("2", text); }

 private:
  std::string Painted(const char* colour, const std::string& text) const;
  bool colours;
};

// Whether a stream gets colours: a terminal does, unless the user wants none anywhere (NO_COLOR).
bool HasColours(Stream stream);
Style StyleOf(Stream stream);

// A line on the error stream that shows how far a long work is; nothing when that stream is no
// terminal. The line is gone when the object is.
class ProgressBar {
 public:
  ProgressBar(std::string what, std::size_t total);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Step();

 private:
  void Draw() const;

  std::string what;
  std::size_t total;
  std::size_t done = 0;
  bool shown;
  std::chrono::steady_clock::time_point drawn{};
};

}  // namespace tools
