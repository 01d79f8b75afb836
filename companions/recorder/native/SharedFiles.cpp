#include "recorder/SharedFiles.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillmar::recorder {
namespace {

constexpr std::string_view kDriveC = "/drive_c/";
// A library of its own on this target, on Windows a part of each module.
constexpr std::string_view kPlatform = "libquillmar_platform";
constexpr int kMostFrames = 64;

// Full path of the module that holds an address. The program itself may be known to the loader by
// a relative path only.
std::filesystem::path ModuleFileAt(const void* address) {
  Dl_info info;
  if (::dladdr(address, &info) == 0 || info.dli_fname == nullptr) return {};
  std::filesystem::path file = info.dli_fname;
  std::error_code ignored;
  if (file.is_relative()) file = std::filesystem::read_symlink("/proc/self/exe", ignored);
  return file;
}

std::string NameAt(const void* address) { return ModuleFileAt(address).stem().string(); }

// Name of the first module behind the platform's frames, from the one at `address` outwards.
std::string NameBehindPlatform(const void* address) {
  void* frames[kMostFrames];
  void** const end = frames + ::backtrace(frames, kMostFrames);
  for (void** frame = std::find(frames, end, address); frame != end; ++frame) {
    std::string name = NameAt(*frame);
    if (name != kPlatform) return name;
  }
  return {};
}

}  // namespace

std::optional<std::filesystem::path> TraceFolderOfThisModule() {
  const std::string file =
      ModuleFileAt(reinterpret_cast<const void*>(&TraceFolderOfThisModule)).string();
  const std::size_t drive = file.rfind(kDriveC);
  if (drive == std::string::npos) return std::nullopt;
  return std::filesystem::path(file.substr(0, drive + kDriveC.size())) / "Vantorel" / "Trace";
}

std::int64_t ClockMicroseconds() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

std::uint32_t ThisProcess() { return static_cast<std::uint32_t>(::getpid()); }

std::string ModuleNameAt(const void* address) {
  std::string name = NameAt(address);
  if (name == kPlatform) name = NameBehindPlatform(address);
  return name.empty() ? "?" : name;
}

SharedMemory::SharedMemory(const std::filesystem::path& file, std::size_t size) : size(size) {
  const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat status {};
  if (::fstat(descriptor, &status) == 0 && status.st_size >= static_cast<off_t>(size)) {
    void* mapped = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (mapped != MAP_FAILED) memory = mapped;
  }
  ::close(descriptor);
}

SharedMemory::SharedMemory(SharedMemory&& other) noexcept
    : memory(std::exchange(other.memory, nullptr)), size(other.size) {}

SharedMemory& SharedMemory::operator=(SharedMemory&& other) noexcept {
  std::swap(memory, other.memory);
  std::swap(size, other.size);
  return *this;
}

SharedMemory::~SharedMemory() {
  if (memory != nullptr) ::munmap(memory, size);
}

SharedLog::SharedLog(const std::filesystem::path& file)
    : handle(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666)) {}

SharedLog::SharedLog(SharedLog&& other) noexcept : handle(std::exchange(other.handle, -1)) {}

SharedLog& SharedLog::operator=(SharedLog&& other) noexcept {
  std::swap(handle, other.handle);
  return *this;
}

SharedLog::~SharedLog() {
  if (handle >= 0) ::close(static_cast<int>(handle));
}

void SharedLog::WriteAt(std::uint32_t offset, std::string_view text) {
  if (handle < 0) return;
  const auto ignored =
      ::pwrite(static_cast<int>(handle), text.data(), text.size(), static_cast<off_t>(offset));
  static_cast<void>(ignored);
}

}  // namespace quillmar::recorder
