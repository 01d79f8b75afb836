#include "trace/Follow.h"

#include <algorithm>
#include <fstream>

#include "recorder/ControlBlock.h"

namespace tools {
namespace {

constexpr auto kPatience = std::chrono::seconds(2);
constexpr std::uintmax_t kBlock = 1 << 20;  // bytes that are read at once

std::string ReadAt(const std::filesystem::path& file, std::uintmax_t place, std::uintmax_t length) {
  std::ifstream log(file, std::ios::binary);
  log.seekg(static_cast<std::streamoff>(place));
  std::string bytes(static_cast<std::size_t>(length), '\0');
  log.read(bytes.data(), static_cast<std::streamsize>(length));
  bytes.resize(static_cast<std::size_t>(log.gcount()));
  return bytes;
}

}  // namespace

LogFollower::LogFollower(const std::filesystem::path& folder, From from)
    : file(folder / quillmar::recorder::kLogFile) {
  std::error_code failed;
  const std::uintmax_t size = std::filesystem::file_size(file, failed);
  if (from == From::End && !failed) place = size;
}

std::optional<quillmar::recorder::TracedCall> LogFollower::Next() {
  for (bool isFresh = false;;) {
    if (const auto line = TakeLine()) {
      if (auto call = quillmar::recorder::ParseTraceLine(*line)) return call;
      isFresh = false;
    } else {
      if (isFresh) return std::nullopt;
      ReadOn();
      isFresh = true;
    }
  }
}

void LogFollower::ReadOn() {
  place += taken;
  taken = 0;
  block.clear();
  std::error_code failed;
  const std::uintmax_t size = std::filesystem::file_size(file, failed);
  if (failed) return;
  if (size < place) place = 0;
  // More than a block only where a single line is that long.
  for (std::uintmax_t length = kBlock; block.find('\n') == std::string::npos; length *= 2) {
    block = ReadAt(file, place, std::min(length, size - place));
    if (block.size() < length) return;
  }
}

std::optional<std::string_view> LogFollower::TakeLine() {
  if (taken < block.size() && block[taken] == '\0' && !SkipEmptyPlace()) return std::nullopt;
  const std::size_t end = block.find('\n', taken);
  if (end == std::string::npos) return std::nullopt;
  const auto line = std::string_view(block).substr(taken, end - taken);
  taken = end + 1;
  return line;
}

bool LogFollower::SkipEmptyPlace() {
  const auto now = std::chrono::steady_clock::now();
  if (waitingAt != place + taken) {
    waitingAt = place + taken;
    waitingSince = now;
  }
  if (now - waitingSince < kPatience) return false;
  taken = std::min(block.find_first_not_of('\0', taken), block.size());
  return true;
}

}  // namespace tools
