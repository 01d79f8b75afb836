#include "common/Place.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "drawboard/CodePage.h"
#include "platform/native/Machine.h"

namespace tools {
namespace fs = std::filesystem;
namespace {

constexpr int kDefaultWidth = 80;

bool WriteDurably(const std::string& path, std::string_view contents, int flags) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666);
  if (file < 0) return false;
  bool good = true;
  while (good && !contents.empty()) {
    const ssize_t written = write(file, contents.data(), contents.size());
    good = written > 0;
    if (good) contents.remove_prefix(static_cast<std::size_t>(written));
  }
  good = good && fsync(file) == 0;
  return close(file) == 0 && good;
}

}  // namespace

void EnterOwnImage() {
  quillmar::platform::AttachToImage(fs::read_symlink("/proc/self/exe").string());
}

bool EnterImage(const std::string& folder) {
  std::error_code failed;
  const fs::path drive = fs::canonical(folder, failed) / "drive_c";
  return !failed && fs::is_directory(drive, failed) &&
         quillmar::platform::AttachToImage((drive / "tool").string());
}

std::optional<std::string> TextOfArgument(const std::string& argument) {
  return drawboard::FromUtf8(argument);
}

fs::path SystemPath(const std::string& windowsPath) {
  return quillmar::platform::Machine::Current().HostPath(windowsPath);
}

std::optional<std::string> ReadSystemFile(const std::string& path) {
  std::error_code failed;
  std::ifstream file(path, std::ios::binary);
  if (!file || !fs::is_regular_file(path, failed)) return std::nullopt;
  return std::string{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool WriteSystemFile(const std::string& path, std::string_view contents) {
  std::error_code failed;
  const fs::path target(path);
  if (target.has_parent_path()) fs::create_directories(target.parent_path(), failed);
  const std::string fresh = path + ".new";
  if (!WriteDurably(fresh, contents, O_TRUNC)) return false;
  fs::rename(fresh, target, failed);
  return !failed;
}

bool AppendSystemFile(const std::string& path, std::string_view contents) {
  return WriteDurably(path, contents, O_APPEND);
}

std::string JoinSystemPath(const std::string& folder, const std::string& name) {
  return (fs::path(folder) / name).string();
}

bool IsTerminal(Stream stream) {
  return isatty(stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

int TerminalWidth() {
  winsize size{};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : kDefaultWidth;
}

}  // namespace tools
