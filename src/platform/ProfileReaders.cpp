#include <cstdint>
#include <vector>

#include "platform/Profile.h"

namespace quillmar::platform {
namespace {

// Room for every number that is not padded on purpose; digits beyond it are not read.
constexpr std::size_t kNumberSize = 64;

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

int NumberOf(const char* text) {
  while (*text > 0 && *text <= ' ') ++text;
  bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  std::uint32_t number = 0;
  for (; IsDigit(*text); ++text) number = number * 10 + static_cast<std::uint32_t>(*text - '0');
  return static_cast<int>(negative ? 0U - number : number);
}

}  // namespace

std::string ReadProfileText(const std::string& file, const std::string& section,
                            const std::string& key, const std::string& fallback, std::size_t size) {
  std::vector<char> buffer(size + 1);
  GetProfileText(file, section.c_str(), key.c_str(), fallback.c_str(), buffer.data(), size);
  return buffer.data();
}

int ReadProfileInt(const std::string& file, const std::string& section, const std::string& key,
                   int fallback) {
  char text[kNumberSize] = "";
  GetProfileText(file, section.c_str(), key.c_str(), "", text, sizeof text);
  return text[0] == '\0' ? fallback : NumberOf(text);
}

}  // namespace quillmar::platform
