#include "common/Terminal.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

namespace tools {
namespace {

constexpr std::size_t kBarWidth = 30;
constexpr auto kInterval = std::chrono::milliseconds(100);

}  // namespace

std::string Style::Painted(const char* colour, const std::string& text) const {
  return colours ? fmt::format("\x1b[{}m{}\x1b[0m", colour, text) : text;
}

bool HasColours(Stream stream) {
  const char* refused = std::getenv("NO_COLOR");
  return IsTerminal(stream) && (refused == nullptr || *refused == '\0');
}

Style StyleOf(Stream stream) { return Style(HasColours(stream)); }

ProgressBar::ProgressBar(std::string what, std::size_t total)
    : what(std::move(what)), total(total), shown(total > 0 && IsTerminal(Stream::Errors)) {}

ProgressBar::~ProgressBar() {
  if (!shown) return;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
}

void ProgressBar::Step() {
  ++done;
  if (!shown) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - drawn < kInterval && done < total) return;
  drawn = now;
  Draw();
}

void ProgressBar::Draw() const {
  const std::size_t filled = kBarWidth * done / total;
  fmt::print(stderr, "\r{} [{:#<{}}{:.<{}}] {}/{}", what, "", filled, "", kBarWidth - filled, done,
             total);
  std::fflush(stderr);
}

}  // namespace tools
