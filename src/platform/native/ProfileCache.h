// Profile files taken apart, kept as long as the files do not change: a caller that reads a file
// key by key must not have the whole of it read for each.
#pragma once

#include <filesystem>
#include <list>
#include <memory>
#include <mutex>
#include <string>

#include "platform/native/HostFiles.h"
#include "platform/native/Paths.h"
#include "platform/native/ProfileFile.h"

namespace quillmar::platform {

class ProfileCache {
 public:
  explicit ProfileCache(const Paths& machinePaths) : paths(machinePaths) {}

  // The file of that Windows path as it is now; an empty one when it is missing or cannot be read.
  std::shared_ptr<const ProfileFile> Get(const std::string& file);

 private:
  struct Entry {
    std::string name;  // as it was asked for
    std::filesystem::path path;
    bool exact;  // the path of just that name
    FileStamp stamp;
    std::shared_ptr<const ProfileFile> file;
  };

  const Paths& paths;
  std::mutex mutex;
  std::list<Entry> entries;  // last used first
};

}  // namespace quillmar::platform
