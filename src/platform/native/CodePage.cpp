#include "platform/native/CodePage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace quillmar::platform {
namespace {

constexpr std::size_t kAsciiSize = 0x80;
constexpr char16_t kReplacement = 0xFFFD;

// Unicode characters of the bytes 0x80 to 0xFF.
constexpr std::array<char16_t, 128> kUpperHalf = {
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

char16_t CharacterOf(char byte) {
  auto index = static_cast<unsigned char>(byte);
  return index < kAsciiSize ? index : kUpperHalf[index - kAsciiSize];
}

// The reverse of kUpperHalf for every character below 0x2200; 0 where there is no byte.
const std::vector<char>& ByteTable() {
  static const std::vector<char> table = [] {
    std::vector<char> bytes(0x2200);
    for (std::size_t i = 1; i < kAsciiSize; ++i) bytes[i] = static_cast<char>(i);
    for (std::size_t i = 0; i < kUpperHalf.size(); ++i) {
      bytes[kUpperHalf[i]] = static_cast<char>(i + kAsciiSize);
    }
    return bytes;
  }();
  return table;
}

std::optional<char> ByteOf(char16_t character) {
  if (character == 0) return '\0';
  const std::vector<char>& table = ByteTable();
  if (character >= table.size() || table[character] == 0) return std::nullopt;
  return table[character];
}

// Lower-case letters from 0xE0 up have their capitals 0x20 below them, those of the C1 area 0x10;
// the rest of the letters lies scattered.
struct CasePair {
  unsigned char lower;
  unsigned char upper;
};
constexpr CasePair kScattered[] = {{0x9A, 0x8A}, {0x9C, 0x8C}, {0x9D, 0x8D}, {0x9E, 0x8E},
                                   {0x9F, 0x8F}, {0xB3, 0xA3}, {0xB9, 0xA5}, {0xBA, 0xAA},
                                   {0xBE, 0xBC}, {0xBF, 0xAF}};

struct CaseTables {
  std::array<char, 256> upper{};
  std::array<char, 256> lower{};

  CaseTables() {
    for (std::size_t i = 0; i < upper.size(); ++i) upper[i] = lower[i] = static_cast<char>(i);
    for (unsigned i = 'a'; i <= 'z'; ++i) Pair(i, i - 0x20);
    for (unsigned i = 0xE0; i <= 0xFE; ++i) {
      if (i != 0xF7) Pair(i, i - 0x20);  // 0xF7 and 0xD7 are the signs of division and product
    }
    for (CasePair pair : kScattered) Pair(pair.lower, pair.upper);
  }

  void Pair(unsigned small, unsigned capital) {
    upper[small] = static_cast<char>(capital);
    lower[capital] = static_cast<char>(small);
  }
};

const CaseTables& Cases() {
  static const CaseTables tables;
  return tables;
}

void AppendUtf8(std::string& text, char32_t character) {
  auto tail = [&](unsigned shift) {
    text += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
    tail(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | (character >> 12));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0 | (character >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

void AppendUtf16(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text += static_cast<char16_t>(character);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (character >> 10));
    text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
  }
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Takes one character off the front of `utf8`.
char32_t TakeUtf8(std::string_view& utf8) {
  auto lead = static_cast<unsigned char>(utf8.front());
  utf8.remove_prefix(1);
  if (lead < 0x80) return lead;
  std::size_t tails = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead >= 0xF5 || utf8.size() < tails) return kReplacement;
  char32_t character = lead & (0x3FU >> tails);
  for (std::size_t i = 0; i < tails; ++i) {
    auto byte = static_cast<unsigned char>(utf8[i]);
    if ((byte & 0xC0) != 0x80) return kReplacement;
    character = (character << 6) | (byte & 0x3FU);
  }
  bool overlong = (tails == 2 && character < 0x800) || (tails == 3 && character < 0x10000);
  bool surrogate = character >= 0xD800 && character < 0xE000;
  if (overlong || surrogate || character > 0x10FFFF) return kReplacement;
  utf8.remove_prefix(tails);
  return character;
}

}  // namespace

std::u16string Widen(std::string_view bytes) {
  std::u16string text(bytes.size(), 0);
  std::transform(bytes.begin(), bytes.end(), text.begin(), CharacterOf);
  return text;
}

std::string Narrow(std::u16string_view text) {
  std::string bytes(text.size(), 0);
  std::transform(text.begin(), text.end(), bytes.begin(),
                 [](char16_t character) { return ByteOf(character).value_or('?'); });
  return bytes;
}

bool FitsCodePage(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char16_t character) { return ByteOf(character).has_value(); });
}

std::string ToUtf8(std::u16string_view text) {
  std::string utf8;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t character = text[i];
    if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      character = 0x10000 + ((character & 0x3FF) << 10) + (text[++i] & 0x3FFU);
    }
    AppendUtf8(utf8, character);
  }
  return utf8;
}

std::u16string FromUtf8(std::string_view utf8) {
  std::u16string text;
  while (!utf8.empty()) AppendUtf16(text, TakeUtf8(utf8));
  return text;
}

char UpperCharacter(char character) { return Cases().upper[static_cast<unsigned char>(character)]; }

char LowerCharacter(char character) { return Cases().lower[static_cast<unsigned char>(character)]; }

char16_t FoldCharacter(char16_t character) {
  std::optional<char> byte = ByteOf(character);
  return byte ? CharacterOf(LowerCharacter(*byte)) : character;
}

std::u16string Fold(std::u16string_view text) {
  std::u16string folded(text.size(), 0);
  std::transform(text.begin(), text.end(), folded.begin(), FoldCharacter);
  return folded;
}

}  // namespace quillmar::platform
