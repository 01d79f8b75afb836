// A copy of a machine image, for programs that must leave the image itself as it is.
#pragma once

#include <filesystem>

namespace tools {

// Libraries and programs are shared with the image by hard links where that can be, everything else
// is written to.
inline void CopyImage(const std::filesystem::path& from, const std::filesystem::path& to) {
  namespace fs = std::filesystem;
  fs::create_directories(to);
  for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
    const fs::path target = to / entry.path().filename();
    const std::string extension = entry.path().extension().string();
    if (entry.is_directory()) {
      CopyImage(entry.path(), target);
    } else if (extension == ".dll" || extension == ".exe") {
      std::error_code failed;
      fs::create_hard_link(entry.path(), target, failed);
      if (failed) fs::copy_file(entry.path(), target);
    } else {
      fs::copy_file(entry.path(), target);
    }
  }
}

}  // namespace tools
