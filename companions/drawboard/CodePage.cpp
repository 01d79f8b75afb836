#include "drawboard/CodePage.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace drawboard {
namespace {

// Characters of the bytes 0x80 to 0xFF, eight a row.
// clang-format off
constexpr std::array<std::uint16_t, 128> kUpperHalf = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039,
    0x015A, 0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x0098, 0x2122, 0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141,
    0x00A4, 0x0104, 0x00A6, 0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B,
    0x00B0, 0x00B1, 0x02DB, 0x0142, 0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB,
    0x013D, 0x02DD, 0x013E, 0x017C, 0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7,
    0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3,
    0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7, 0x010D, 0x00E9, 0x0119, 0x00EB,
    0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7,
    0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};
// clang-format on

// Longest sequence of UTF-8 that a character of the code page takes.
constexpr std::size_t kLongestSequence = 3;

void AppendUtf8(std::string& text, std::uint16_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
    text += static_cast<char>(0x80 | (character & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (character >> 12));
    text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (character & 0x3F));
  }
}

// The character at `place`, which moves behind it; nothing for an incomplete, overlong or longer
// sequence.
std::optional<std::uint16_t> NextCharacter(std::string_view utf8, std::size_t& place) {
  const auto first = static_cast<unsigned char>(utf8[place]);
  const std::size_t length = first < 0x80 ? 1 : (first & 0xE0) == 0xC0 ? 2 : kLongestSequence;
  if (length == kLongestSequence && (first & 0xF0) != 0xE0) return std::nullopt;
  if (utf8.size() - place < length) return std::nullopt;
  unsigned character = length == 1 ? first : length == 2 ? first & 0x1F : first & 0x0F;
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(utf8[place + i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (next & 0x3F);
  }
  constexpr unsigned kSmallest[] = {0, 0, 0x80, 0x800};
  if (character < kSmallest[length]) return std::nullopt;
  place += length;
  return static_cast<std::uint16_t>(character);
}

}  // namespace

std::string ToUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    AppendUtf8(text, value < 0x80 ? value : kUpperHalf[value - 0x80]);
  }
  return text;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t place = 0; place < utf8.size();) {
    const auto character = NextCharacter(utf8, place);
    if (!character) return std::nullopt;
    if (*character < 0x80) {
      bytes += static_cast<char>(*character);
      continue;
    }
    const auto found = std::find(kUpperHalf.begin(), kUpperHalf.end(), *character);
    if (found == kUpperHalf.end()) return std::nullopt;
    bytes += static_cast<char>(0x80 + (found - kUpperHalf.begin()));
  }
  return bytes;
}

}  // namespace drawboard
