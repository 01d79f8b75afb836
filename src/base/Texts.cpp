#include "base/Texts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/FloatingPoint.h"

namespace quillmar {
namespace {

constexpr int kSignificantDigits = 8;

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsExponentLetter(char c) { return c == 'e' || c == 'E'; }

std::string_view SkipBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

// Drops one plus sign in front of what may be a number: the standard conversions do not take it.
std::string_view SkipPlus(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

// What from_chars takes beyond plain decimals ("inf", "nan") is no number in a protocol.
bool BeginsLikeDecimal(std::string_view text) {
  if (!text.empty() && text.front() == '-') text.remove_prefix(1);
  return !text.empty() && (IsDigit(text.front()) || text.front() == '.');
}

// Whether a number that no double can hold is too large, else too small. Its power of ten tells:
// the exponent, and where the first digit that counts stands before or behind the separator.
bool IsTooLarge(std::string_view number) {
  const auto letter = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, letter);
  const auto firstDigit = static_cast<long long>(mantissa.find_first_of("123456789"));
  const auto separator = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
  const int exponent = letter == std::string_view::npos ? 0 : ParseInt(number.substr(letter + 1));
  return exponent + separator - firstDigit > 0;
}

}  // namespace

std::string FormatNumber(double value) {
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general,
                                 kSignificantDigits);
  return std::string(buffer, end.ptr);
}

double ParseReal(std::string_view text) {
  const platform::StandardFloatingPoint scope;
  const std::string_view number = SkipPlus(SkipBlanks(text));
  if (!BeginsLikeDecimal(number)) return 0.0;
  double value = 0.0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    const auto length = static_cast<std::size_t>(result.ptr - number.data());
    const double limit = IsTooLarge(number.substr(0, length)) ? HUGE_VAL : 0.0;
    return std::copysign(limit, number.front() == '-' ? -1.0 : 1.0);
  }
  return result.ec == std::errc() ? value : 0.0;
}

int ParseInt(std::string_view text) {
  const std::string_view number = SkipPlus(SkipBlanks(text));
  int value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    return number.front() == '-' ? std::numeric_limits<int>::min()
                                 : std::numeric_limits<int>::max();
  }
  return result.ec == std::errc() ? value : 0;
}

bool IsNumber(std::string_view text) {
  bool separatorSeen = false;
  bool exponentSeen = false;
  bool digitSeen = false;  // in the mantissa, or in the exponent once that has begun
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (IsDigit(c)) {
      digitSeen = true;
    } else if (c == '+' || c == '-') {
      if (i != 0 && !IsExponentLetter(text[i - 1])) return false;
    } else if (c == ',' || c == '.') {
      if (separatorSeen || exponentSeen) return false;
      separatorSeen = true;
    } else if (IsExponentLetter(c)) {
      if (exponentSeen || !digitSeen) return false;
      exponentSeen = true;
      digitSeen = false;
    } else {
      return false;
    }
  }
  return digitSeen && IsDigit(text.back());
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t at = 0;
  if (!from.empty()) {
    for (std::size_t hit = text.find(from); hit != std::string_view::npos;
         hit = text.find(from, at)) {
      result.append(text, at, hit - at).append(to);
      at = hit + from.size();
    }
  }
  result.append(text.substr(at));
  return result;
}

std::vector<std::string> SplitList(std::string_view text, std::string_view separator) {
  std::vector<std::string> items;
  for (std::size_t hit = text.find(separator); hit != std::string_view::npos && hit > 0;
       hit = text.find(separator)) {
    items.emplace_back(text.substr(0, hit));
    text.remove_prefix(hit + separator.size());
  }
  if (!text.empty()) items.emplace_back(text);
  return items;
}

std::string JoinList(const std::vector<std::string>& items, char separator) {
  std::string text;
  for (const std::string& item : items) {
    if (&item != &items.front()) text += separator;
    text += item;
  }
  return text;
}

std::vector<std::string> SplitKeepingEmpty(std::string_view text, char separator) {
  std::vector<std::string> items;
  for (std::size_t hit = text.find(separator); hit != std::string_view::npos;
       hit = text.find(separator)) {
    items.emplace_back(text.substr(0, hit));
    text.remove_prefix(hit + 1);
  }
  if (!text.empty()) items.emplace_back(text);
  return items;
}

std::vector<std::string_view> SplitTerminated(std::string_view text, std::string_view terminator) {
  std::vector<std::string_view> pieces;
  for (std::size_t hit = text.find(terminator); hit != std::string_view::npos;
       hit = text.find(terminator)) {
    pieces.push_back(text.substr(0, hit));
    text.remove_prefix(hit + terminator.size());
  }
  return pieces;
}

}  // namespace quillmar
