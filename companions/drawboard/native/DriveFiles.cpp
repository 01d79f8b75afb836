#include "drawboard/DriveFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/native/Machine.h"

namespace drawboard {
namespace fs = std::filesystem;
namespace {

fs::path HostPath(const std::string& path) {
  return quillmar::platform::Machine::Current().HostPath(path);
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path) {
  std::error_code failed;
  const fs::path host = HostPath(path);
  if (!fs::is_regular_file(host, failed)) return std::nullopt;
  std::ifstream file(host, std::ios::binary);
  if (!file) return std::nullopt;
  std::string contents{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (file.bad()) return std::nullopt;
  return contents;
}

bool WriteWholeFile(const std::string& path, std::string_view contents) {
  const fs::path host = HostPath(path);
  std::error_code failed;
  fs::create_directories(host.parent_path(), failed);
  fs::path fresh = host;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
  file.close();
  if (file) fs::rename(fresh, host, failed);
  if (file && !failed) return true;
  fs::remove(fresh, failed);
  return false;
}

bool RelocateFile(const std::string& from, const std::string& to) {
  const fs::path target = HostPath(to);
  std::error_code failed;
  if (fs::exists(target, failed)) return false;
  fs::create_directories(target.parent_path(), failed);
  fs::rename(HostPath(from), target, failed);
  return !failed;
}

bool EraseFolder(const std::string& path) {
  std::error_code failed;
  const fs::path host = HostPath(path);
  if (!fs::is_directory(host, failed)) return true;
  fs::remove_all(host, failed);
  return !failed;
}

bool MakeFolder(const std::string& path) {
  std::error_code failed;
  fs::create_directories(HostPath(path), failed);
  return fs::is_directory(HostPath(path), failed);
}

std::vector<std::string> FilesOf(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code failed;
  for (const fs::directory_entry& entry : fs::directory_iterator(HostPath(folder), failed)) {
    if (entry.is_regular_file(failed)) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace drawboard
