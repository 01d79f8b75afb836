#include "session/Place.h"

#include <unistd.h>

#include <fstream>
#include <iterator>

#include "platform/native/Machine.h"

namespace session {
namespace fs = std::filesystem;

void EnterImage() {
  quillmar::platform::AttachToImage(fs::read_symlink("/proc/self/exe").string());
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
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
  file.close();
  if (!file) return false;
  fs::rename(fresh, target, failed);
  return !failed;
}

std::string JoinSystemPath(const std::string& folder, const std::string& name) {
  return (fs::path(folder) / name).string();
}

bool OutputIsTerminal() { return isatty(STDOUT_FILENO) != 0; }

}  // namespace session
