#include "platform/native/TextFiles.h"

#include "platform/native/CodePage.h"

namespace quillmar::platform {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::string_view kUtf16ReversedMark = "\xFE\xFF";

std::u16string DecodeUnits(std::string_view bytes, std::size_t low, std::size_t high) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i + low]) |
                                  (static_cast<unsigned char>(bytes[i + high]) << 8));
  }
  return text;
}

std::string EncodeUnits(std::u16string_view text, std::string_view mark, unsigned firstShift) {
  std::string bytes(mark);
  bytes.reserve(bytes.size() + text.size() * 2);
  for (char16_t unit : text) {
    bytes += static_cast<char>(unit >> firstShift);
    bytes += static_cast<char>(unit >> (8 - firstShift));
  }
  return bytes;
}

bool StartsWith(std::string_view bytes, std::string_view mark) {
  return bytes.substr(0, mark.size()) == mark;
}

}  // namespace

DecodedText DecodeText(std::string_view bytes) {
  if (StartsWith(bytes, kUtf8Mark)) {
    return {FromUtf8(bytes.substr(kUtf8Mark.size())), TextEncoding::Utf8};
  }
  if (StartsWith(bytes, kUtf16Mark)) {
    return {DecodeUnits(bytes.substr(kUtf16Mark.size()), 0, 1), TextEncoding::Utf16};
  }
  if (StartsWith(bytes, kUtf16ReversedMark)) {
    return {DecodeUnits(bytes.substr(kUtf16Mark.size()), 1, 0), TextEncoding::Utf16Reversed};
  }
  return {Widen(bytes), TextEncoding::CodePage};
}

std::string EncodeText(std::u16string_view text, TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::Utf8:
      return std::string(kUtf8Mark) + ToUtf8(text);
    case TextEncoding::Utf16:
      return EncodeUnits(text, kUtf16Mark, 0);
    case TextEncoding::Utf16Reversed:
      return EncodeUnits(text, kUtf16ReversedMark, 8);
    case TextEncoding::CodePage:
      break;
  }
  return Narrow(text);
}

}  // namespace quillmar::platform
