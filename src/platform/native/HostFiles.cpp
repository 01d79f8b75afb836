#include "platform/native/HostFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>

namespace quillmar::platform {
namespace {

constexpr std::int64_t kSettlingTime = 50'000'000;  // nanoseconds; file times step by 4 to 10 ms
constexpr std::chrono::milliseconds kLockPatience{5000};
constexpr std::chrono::milliseconds kLockRetry{2};

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileStamp StampOf(const struct stat& status) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  FileStamp stamp;
  stamp.exists = true;
  stamp.device = status.st_dev;
  stamp.inode = status.st_ino;
  stamp.size = status.st_size;
  // The time of the last change of any kind: unlike the time of the last writing, no program can
  // set it back.
  stamp.changed = Nanoseconds(status.st_ctim);
  stamp.settled = Nanoseconds(now) - stamp.changed > kSettlingTime;
  return stamp;
}

class Descriptor {
 public:
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return number; }
  bool Open() const { return number >= 0; }
  bool Close() {
    bool closed = number < 0 || close(number) == 0;
    number = -1;
    return closed;
  }

 private:
  int number;
};

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool ReadAll(int file, std::string& bytes) {
  std::size_t filled = 0;
  for (;;) {
    if (filled == bytes.size()) bytes.resize(filled + 4096 + filled / 2);
    ssize_t got = read(file, bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  bytes.resize(filled);
  return true;
}

// A name that no other process or thread of this machine uses.
std::filesystem::path NameOfReplacement(const std::filesystem::path& path) {
  static std::atomic<unsigned> count{0};
  std::filesystem::path name = path;
  name += "." + std::to_string(getpid()) + "-" + std::to_string(++count) + ".new";
  return name;
}

}  // namespace

bool FileStamp::SameAs(const FileStamp& before) const {
  if (!exists || !before.exists) return exists == before.exists;
  return before.settled && device == before.device && inode == before.inode &&
         size == before.size && changed == before.changed;
}

FileStamp StampOf(const std::filesystem::path& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? StampOf(status) : FileStamp{};
}

std::optional<FileContents> ReadFile(const std::filesystem::path& path) {
  Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.Open()) {
    if (errno == ENOENT || errno == ENOTDIR) return FileContents{};
    return std::nullopt;
  }
  struct stat status {};
  if (fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  FileContents contents;
  contents.stamp = StampOf(status);
  contents.bytes.resize(static_cast<std::size_t>(status.st_size) + 1);
  if (!ReadAll(file.Number(), contents.bytes)) return std::nullopt;
  return contents;
}

bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes) {
  std::error_code error;
  std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
  if (error) return false;
  struct stat status {};
  mode_t mode = 0666;
  if (stat(target.c_str(), &status) == 0) {
    // Asked of the file, not of the system: the superuser may write everything.
    if (!S_ISREG(status.st_mode) || (status.st_mode & 0222) == 0) return false;
    mode = status.st_mode & 07777;
  } else {
    status.st_mode = 0;
  }
  std::filesystem::path fresh = NameOfReplacement(target);
  Descriptor file(open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!file.Open()) return false;
  bool whole = WriteAll(file.Number(), bytes) &&
               (status.st_mode == 0 || fchmod(file.Number(), mode) == 0) &&
               fsync(file.Number()) == 0 && file.Close();
  if (!whole || rename(fresh.c_str(), target.c_str()) != 0) {
    unlink(fresh.c_str());
    return false;
  }
  return true;
}

FolderLock::FolderLock(const std::filesystem::path& folder)
    : descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (descriptor < 0) return;
  auto deadline = std::chrono::steady_clock::now() + kLockPatience;
  while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) break;
    if (std::chrono::steady_clock::now() > deadline) return;
    std::this_thread::sleep_for(kLockRetry);
  }
  held = true;
}

FolderLock::~FolderLock() {
  if (descriptor >= 0) close(descriptor);
}

}  // namespace quillmar::platform
