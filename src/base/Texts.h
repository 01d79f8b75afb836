// Texts and numbers: conversions that do not look at the host's locale, and the ways in which
// lists are cut apart. The ways differ on purpose; each list has its own rule.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

// A zero-terminated text argument: made from a literal or a string without a copy; a null pointer
// counts as an empty text.
class TextRef {
 public:
  TextRef(const char* text) : characters(text != nullptr ? text : "") {}
  TextRef(const std::string& text) : characters(text.c_str()) {}
  const char* Get() const { return characters; }

 private:
  const char* characters;
};

// A real as "%.8g" writes it, always with a decimal point and a two-digit exponent at least.
std::string FormatNumber(double value);

// The leading real of a text (blanks skipped), 0 when there is none. Only "." separates decimals.
double ParseReal(std::string_view text);

// The leading decimal integer of a text (blanks skipped), 0 when there is none; a number beyond
// 32 bits becomes the nearest 32-bit one.
int ParseInt(std::string_view text);

// True for a text that stands for a number: digits with at most one decimal separator ("," or
// ".") before the exponent, signs only first or behind "e"/"E", an exponent letter once and only
// behind a digit, and a digit at the end, which belongs to the exponent when there is one.
bool IsNumber(std::string_view text);

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

// List of identifiers or keywords: cut at the separator while it stands at a position greater
// than 0; a separator in front ends the cutting, and what is left, when not empty, is the last
// item. "a;b;" gives a, b; ";a" gives ";a".
std::vector<std::string> SplitList(std::string_view text, std::string_view separator);

// The items with the separator between them.
std::string JoinList(const std::vector<std::string>& items, char separator);

// Cut at every separator; empty pieces between separators stay, an empty piece at the end does
// not. "A,,B," gives A, "", B.
std::vector<std::string> SplitKeepingEmpty(std::string_view text, char separator);

// The pieces that stand in front of a terminator; what follows the last terminator is dropped.
std::vector<std::string_view> SplitTerminated(std::string_view text, std::string_view terminator);

}  // namespace quillmar
