#include "trace/Follow.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "recorder/ControlBlock.h"

namespace tools {
namespace {

constexpr auto kPatience = std::chrono::seconds(2);

}  // namespace

LogFollower::LogFollower(const std::filesystem::path& folder)
    : file(folder / quillmar::recorder::kLogFile) {}

std::vector<quillmar::recorder::TracedCall> LogFollower::Take() {
  ReadNew();
  std::vector<quillmar::recorder::TracedCall> calls;
  while (!unread.empty()) {
    if (unread.front() == '\0' && !SkipEmptyPlace()) break;
    const std::size_t end = unread.find('\n');
    if (end == std::string::npos) break;
    if (auto call = quillmar::recorder::ParseTraceLine(std::string_view(unread).substr(0, end))) {
      calls.push_back(std::move(*call));
    }
    unread.erase(0, end + 1);
  }
  return calls;
}

void LogFollower::ReadNew() {
  std::error_code failed;
  const std::uintmax_t size = std::filesystem::file_size(file, failed);
  if (failed) return;
  if (size < place) {
    place = 0;
    unread.clear();
  }
  // Places that were empty may be filled by now: what is unread is read again.
  const std::uintmax_t start = place - unread.size();
  std::ifstream log(file, std::ios::binary);
  log.seekg(static_cast<std::streamoff>(start));
  unread.assign(std::istreambuf_iterator<char>(log), {});
  place = start + unread.size();
}

bool LogFollower::SkipEmptyPlace() {
  const auto now = std::chrono::steady_clock::now();
  if (!waits) waitingSince = now;
  waits = now - waitingSince < kPatience;
  if (waits) return false;
  unread.erase(0, std::min(unread.find_first_not_of('\0'), unread.size()));
  return true;
}

}  // namespace tools
