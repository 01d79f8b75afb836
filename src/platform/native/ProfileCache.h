// Profile files taken apart, kept as long as the files do not change: a caller that reads a file
// key by key must not have the whole of it read for each.
#pragma once

#include <filesystem>
#include <list>
#include <memory>
#include <mutex>

#include "platform/native/HostFiles.h"
#include "platform/native/ProfileFile.h"

namespace quillmar::platform {

class ProfileCache {
 public:
  // The file as it is now; an empty one when it is missing or cannot be read.
  std::shared_ptr<const ProfileFile> Get(const std::filesystem::path& path);

 private:
  struct Entry {
    std::filesystem::path path;
    FileStamp stamp;
    std::shared_ptr<const ProfileFile> file;
  };

  std::mutex mutex;
  std::list<Entry> entries;  // last used first
};

}  // namespace quillmar::platform
