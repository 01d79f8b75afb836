// Files of the host: read whole, replaced whole, watched for changes by others.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar::platform {

// What tells one state of a file from another.
struct FileStamp {
  bool exists = false;
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t changed = 0;  // nanoseconds
  // The file was old enough when the stamp was taken that a later change must show in its time,
  // which moves in steps of a few milliseconds.
  bool settled = false;

  // True when a file of this stamp is certainly as it was when `before` was taken.
  bool SameAs(const FileStamp& before) const;
};

FileStamp StampOf(const std::filesystem::path& path);

// A file's contents and stamp of the same moment.
struct FileContents {
  std::string bytes;
  FileStamp stamp;
};

// Nothing when the file is there but cannot be read; a missing file has no bytes and a stamp that
// says so.
std::optional<FileContents> ReadFile(const std::filesystem::path& path);

// Puts a new file in the place of the old one. When the process is killed at any moment there is
// the old or the new one, whole, and after true the new one; when the power fails, one of them, for
// the new one is flushed before it takes the place. A file without write permission is not
// replaced.
bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes);

// Keeps other processes and threads from replacing files of a folder that read them before under
// this lock. Waits a few seconds at most. On a file system without locks nobody is kept away.
class FolderLock {
 public:
  explicit FolderLock(const std::filesystem::path& folder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  bool Held() const { return held; }

 private:
  int descriptor = -1;
  bool held = false;
};

}  // namespace quillmar::platform
