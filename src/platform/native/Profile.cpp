#include "platform/Profile.h"

#include <algorithm>
#include <cstring>

#include "platform/System.h"
#include "platform/native/CodePage.h"
#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

std::filesystem::path PathOf(const std::string& file) {
  bool bare = file.find_first_of("\\/:") == std::string::npos;
  return Machine::Current().HostPath(bare ? JoinPath(WindowsFolder(), file) : file);
}

std::u16string WithoutQuotes(std::u16string_view value) {
  bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                value.back() == value.front();
  if (quoted) value = value.substr(1, value.size() - 2);
  return std::u16string(value);
}

std::string WithoutTrailingBlanks(const char* fallback) {
  std::string text = fallback != nullptr ? fallback : "";
  text.resize(text.find_last_not_of(' ') + 1);
  return text;
}

// The part of a text that fits.
std::size_t Copy(std::u16string_view text, char* buffer, std::size_t size) {
  std::string bytes = Narrow(text.substr(0, size - 1));
  std::memcpy(buffer, bytes.c_str(), bytes.size() + 1);
  return bytes.size();
}

// Names, each closed by a NUL, and one NUL more; cut so that both NULs at the end fit.
std::size_t CopyList(const std::vector<std::u16string_view>& names, char* buffer,
                     std::size_t size) {
  std::string list;
  for (std::u16string_view name : names) list.append(Narrow(name)).push_back('\0');
  if (size < 2) {
    buffer[0] = '\0';
    return 0;
  }
  bool fits = list.size() + 1 <= size;
  std::size_t length = fits ? list.size() : size - 2;
  std::memcpy(buffer, list.data(), length);
  std::memset(buffer + length, 0, fits ? 1 : 2);
  return length;
}

}  // namespace

std::size_t GetProfileText(const std::string& file, const char* section, const char* key,
                           const char* fallback, char* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return 0;
  std::shared_ptr<const ProfileFile> profile =
      Machine::Current().Internals().profiles.Get(PathOf(file));
  if (section == nullptr) return CopyList(profile->Sections(), buffer, size);
  std::u16string deputy = WithoutQuotes(Widen(WithoutTrailingBlanks(fallback)));
  std::u16string home = Widen(section);
  if (key == nullptr) {
    std::vector<std::u16string_view> keys = profile->Keys(home);
    return keys.empty() ? Copy(deputy, buffer, size) : CopyList(keys, buffer, size);
  }
  std::optional<std::u16string_view> value = profile->Find(home, Widen(key));
  return Copy(value ? WithoutQuotes(*value) : deputy, buffer, size);
}

bool WriteProfileText(const std::string& file, const char* section, const char* key,
                      const char* value) {
  if (section == nullptr) return false;
  std::filesystem::path path = PathOf(file);
  FolderLock lock(path.parent_path());
  std::optional<FileContents> contents = lock.Held() ? ReadFile(path) : std::nullopt;
  if (!contents) return false;
  ProfileFile profile(contents->bytes);
  std::u16string home = Widen(section);
  std::optional<std::string> changed =
      key == nullptr     ? profile.WithoutSection(home)
      : value == nullptr ? profile.WithoutKey(home, Widen(key))
                         : profile.WithValue(home, Widen(key), Widen(value));
  return !changed || ReplaceFile(path, *changed);
}

}  // namespace quillmar::platform
