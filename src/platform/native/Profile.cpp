#include "platform/Profile.h"

#include <algorithm>
#include <cstring>

#include "platform/System.h"
#include "platform/native/CodePage.h"
#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

std::string WithFolder(const std::string& file) {
  bool bare = file.find_first_of("\\/:") == std::string::npos;
  return bare ? JoinPath(WindowsFolder(), file) : file;
}

bool IsQuoted(std::u16string_view value) {
  return value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
         value.back() == value.front();
}

// The first character stays, also when it is a blank.
std::u16string_view WithoutTrailingBlanks(std::u16string_view text) {
  while (text.size() > 1 && text.back() == u' ') text.remove_suffix(1);
  return text;
}

// The part of a text that fits.
std::size_t CopyText(std::u16string_view text, char* buffer, std::size_t size) {
  std::string bytes = Narrow(text.substr(0, size - 1));
  std::memcpy(buffer, bytes.c_str(), bytes.size() + 1);
  return bytes.size();
}

// The part of a value that fits, without its quotes. When the value fits exactly the system takes
// its last character for the closing quote.
std::size_t CopyValue(std::u16string_view value, char* buffer, std::size_t size) {
  if (!IsQuoted(value)) return CopyText(value, buffer, size);
  value.remove_prefix(1);
  std::size_t length = CopyText(value, buffer, size);
  if (length > 0 && size >= value.size()) buffer[--length] = '\0';
  return length;
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
  std::size_t length = std::min(list.size(), size - 2);
  std::memcpy(buffer, list.data(), length);
  std::memset(buffer + length, 0, 2);
  return length;
}

// A list that begins with nothing is replaced by the fallback, in the form of a list of one.
std::size_t CopyKeys(const std::vector<std::u16string_view>& keys, std::u16string_view fallback,
                     char* buffer, std::size_t size) {
  std::size_t length = CopyList(keys, buffer, size);
  if (buffer[0] != '\0') return length;
  length = CopyValue(fallback, buffer, size);
  if (length + 1 < size) buffer[length + 1] = '\0';
  return length;
}

}  // namespace

std::size_t GetProfileText(const std::string& file, const char* section, const char* key,
                           const char* fallback, char* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return 0;
  std::shared_ptr<const ProfileFile> profile =
      Machine::Current().Internals().profiles.Get(WithFolder(file));
  if (section == nullptr) return CopyList(profile->Sections(), buffer, size);
  std::u16string home = Widen(section);
  std::u16string deputy = Widen(fallback != nullptr ? fallback : "");
  if (key == nullptr) return CopyKeys(profile->Keys(home), deputy, buffer, size);
  std::optional<std::u16string_view> value = profile->Find(home, Widen(key));
  return CopyValue(value.value_or(WithoutTrailingBlanks(deputy)), buffer, size);
}

bool WriteProfileText(const std::string& file, const char* section, const char* key,
                      const char* value) {
  if (section == nullptr) return false;
  std::filesystem::path path = Machine::Current().HostPath(WithFolder(file));
  FolderLock lock(path.parent_path());
  std::optional<FileContents> contents = lock.Held() ? ReadFile(path) : std::nullopt;
  if (!contents) return false;
  ProfileFile profile(contents->bytes);
  std::u16string home = Widen(section);
  std::optional<std::string> changed = key == nullptr ? profile.WithoutSection(home)
                                       : value == nullptr
                                           ? profile.WithoutKey(home, Widen(key))
                                           : profile.WithValue(home, Widen(key), Widen(value));
  return !changed || ReplaceFile(path, *changed);
}

}  // namespace quillmar::platform
