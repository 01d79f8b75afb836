#include "conversion/ViewKeyMapping.h"

#include <string_view>

#include "platform/Profile.h"
#include "platform/System.h"

namespace quillmar {
namespace {

constexpr std::size_t kListStep = 1024;
constexpr std::size_t kValueStep = 256;

// Reads with a buffer that grows by `step` until nothing was cut. With a null key: the section's
// keys, each closed by a NUL.
std::string ReadGrowing(const std::string& file, const std::string& section, const char* key,
                        std::size_t step) {
  std::string buffer;
  std::size_t length = 0;
  do {
    buffer.resize(buffer.size() + step);
    length = platform::GetProfileText(file, section.c_str(), key, "", buffer.data(), buffer.size());
  } while (length + 2 >= buffer.size());
  buffer.resize(length);
  return buffer;
}

bool BeginsWithNoCase(const std::string& text, const std::string& front) {
  return text.size() >= front.size() &&
         platform::EqualsNoCase(std::string_view(text).substr(0, front.size()), front);
}

}  // namespace

bool ViewKeyMapping::Load(ConverterKind kind, const std::string& iniPath,
                          const std::string& section) {
  bool& isLoaded = loaded[static_cast<std::size_t>(kind)];
  if (isLoaded) return !entries.empty();
  const std::string keys = ReadGrowing(iniPath, section, nullptr, kListStep);
  entries.clear();
  for (std::size_t start = 0; start < keys.size();) {
    const std::string key = keys.c_str() + start;
    start += key.size() + 1;
    std::string value = ReadGrowing(iniPath, section, key.c_str(), kValueStep);
    if (value.empty()) return false;
    entries.emplace_back(key, std::move(value));
  }
  isLoaded = !entries.empty();
  return isLoaded;
}

const std::string* ViewKeyMapping::Find(const std::string& viewKey) const {
  for (const auto& [key, value] : entries) {
    if (BeginsWithNoCase(key, viewKey)) return &value;
  }
  return nullptr;
}

}  // namespace quillmar
