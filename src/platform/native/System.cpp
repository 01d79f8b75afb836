#include "platform/System.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>

#include "platform/native/CodePage.h"
#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

constexpr const char* kWindowsFolder = "C:\\windows";
constexpr const char* kTempFolder = "C:\\windows\\temp";
constexpr const char* kDefaultDocumentsFolder = "C:\\users\\user\\Documents";
constexpr const char* kShellFoldersKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr const char* kDocumentsValue = "Personal";
constexpr unsigned kTempNames = 0x10000;

std::string Hexadecimal(unsigned number) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (; number != 0 || text.empty(); number /= 16) text.insert(text.begin(), digits[number % 16]);
  return text;
}

}  // namespace

std::uint32_t TickCount() { return Machine::Current().Internals().ReadClock(); }

std::uint32_t VolumeSerial(const std::string& drive) {
  Machine::State& machine = Machine::Current().Internals();
  struct statvfs volume {};
  if (statvfs(machine.paths.ToHost(drive).c_str(), &volume) != 0) return 0;
  std::lock_guard guard(machine.mutex);
  if (machine.volumeSerial) return *machine.volumeSerial;
  auto identity = static_cast<std::uint64_t>(volume.f_fsid);
  return static_cast<std::uint32_t>(identity ^ (identity >> 32));
}

// Unlike the other folders it is made when it is missing: every installation has one.
std::string TempFolder() {
  Machine& machine = Machine::Current();
  std::error_code error;
  std::filesystem::create_directories(machine.HostPath(kTempFolder), error);
  return kTempFolder;
}

std::string DocumentsFolder() {
  std::optional<RegistryHandle> key = OpenKey(Hive::CurrentUser, kShellFoldersKey);
  std::optional<RegistryValue> value = key ? key->Query(kDocumentsValue) : std::nullopt;
  std::string folder = value ? value->data.c_str() : "";
  return folder.empty() ? kDefaultDocumentsFolder : folder;
}

std::string WindowsFolder() { return kWindowsFolder; }

std::string MakeTempFile(const std::string& folder, const std::string& prefix,
                         const std::string& extension) {
  Machine& machine = Machine::Current();
  unsigned start = static_cast<unsigned>(getpid()) * 16 + TickCount();
  for (unsigned i = 0; i < kTempNames; ++i) {
    std::string path =
        JoinPath(folder, prefix + Hexadecimal((start + i) % kTempNames) + "." + extension);
    int file = open(machine.HostPath(path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file >= 0) {
      close(file);
      return path;
    }
    if (errno != EEXIST) return {};
  }
  return {};
}

std::string UpperCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), UpperCharacter);
  return result;
}

std::string LowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), LowerCharacter);
  return result;
}

bool EqualsNoCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerCharacter(a) == LowerCharacter(b); });
}

void DebugOutput(const std::string& text) { Machine::Current().Internals().debugRecord->Add(text); }

}  // namespace quillmar::platform
