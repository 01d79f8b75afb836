#include "session/Progress.h"

#include <fmt/format.h>

#include <cstdio>

#include "common/Place.h"

namespace session {
namespace {

constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr std::size_t kBarWidth = 20;

// At most `width` characters of a UTF-8 text.
std::string Cut(const std::string& text, std::size_t width) {
  std::size_t place = 0;
  for (std::size_t shown = 0; place < text.size(); ++place) {
    const bool begins = (static_cast<unsigned char>(text[place]) & 0xC0) != 0x80;
    if (begins && shown++ == width) break;
  }
  return text.substr(0, place);
}

}  // namespace

void Progress::Show(std::size_t step, std::size_t count, const std::string& title) {
  if (!shown) return;
  const auto now = std::chrono::steady_clock::now();
  if (step != current) {
    current = step;
    began = now;
  } else if (now - drawn < kInterval) {
    return;
  }
  drawn = now;
  visible = true;
  const std::size_t filled = kBarWidth * (step - 1) / count;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - began).count();
  const std::string line =
      fmt::format("[{:#<{}}{:.<{}}] {}/{}  {}{}", "", filled, "", kBarWidth - filled, step, count,
                  title, seconds > 0 ? fmt::format("  {} s", seconds) : "");
  const int width = tools::TerminalWidth();
  fmt::print(stderr, "\r{}\x1b[K", Cut(line, width > 1 ? static_cast<std::size_t>(width) - 1 : 1));
  std::fflush(stderr);
}

void Progress::Clear() {
  if (!visible) return;
  visible = false;
  current = 0;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
}

}  // namespace session
