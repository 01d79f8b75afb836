#include "recorder/Arguments.h"

#include <array>
#include <charconv>

namespace quillmar::recorder {
namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// List items that are shown of a list, and pairs of extended data.
constexpr std::size_t kShownItems = 8;

void AppendEscaped(std::string& out, unsigned char character) {
  switch (character) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    default:
      break;
  }
  if (character >= 0x20 && character < 0x7F) {
    out += static_cast<char>(character);
    return;
  }
  out += "\\x";
  out += kHexDigits[character >> 4];
  out += kHexDigits[character & 15];
}

}  // namespace

std::string DescribeText(std::string_view text, std::size_t limit) {
  // A buffer of blanks that nobody filled says no more than its length.
  if (text.size() > 1 && text.find_first_not_of(' ') == std::string_view::npos) {
    return "blanks*" + std::to_string(text.size());
  }
  const bool cut = limit != 0 && text.size() > limit;
  const std::string_view shown = cut ? text.substr(0, limit) : text;
  std::string out = "\"";
  out.reserve(shown.size() + 16);
  for (const char character : shown) AppendEscaped(out, static_cast<unsigned char>(character));
  out += '"';
  if (cut) out += "+" + std::to_string(text.size());
  return out;
}

std::string DescribeTexts(const QmStringList* list, std::size_t limit) {
  if (list == nullptr) return "null";
  const std::vector<std::string_view> texts = TextsOf(list);
  const std::size_t shown = limit == 0 ? texts.size() : std::min(texts.size(), kShownItems);
  std::string out = "[";
  for (std::size_t i = 0; i < shown; ++i) {
    if (i > 0) out += ", ";
    out += DescribeText(texts[i], limit);
  }
  if (shown < texts.size()) out += ", ...";
  return out + "]*" + std::to_string(texts.size());
}

std::string DescribePairs(const ExtDataPair* pairs, int count, std::size_t limit) {
  if (pairs == nullptr) return "null";
  const auto number = static_cast<std::size_t>(count > 0 ? count : 0);
  const std::size_t shown = limit == 0 ? number : std::min(number, kShownItems);
  std::string out = "{";
  for (std::size_t i = 0; i < shown; ++i) {
    if (i > 0) out += ", ";
    out += Describe(static_cast<const char*>(pairs[i].name), limit) + ": " +
           Describe(static_cast<const char*>(pairs[i].value), limit);
  }
  if (shown < number) out += ", ...";
  return out + "}";
}

std::string DescribeNumber(double value) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return std::string(digits.data(), end);
}

}  // namespace quillmar::recorder
