// Text files of the machine as Windows tells their encodings apart: by a byte order mark, else
// they are in the code page.
#pragma once

#include <string>
#include <string_view>

namespace quillmar::platform {

enum class TextEncoding { CodePage, Utf8, Utf16, Utf16Reversed };

struct DecodedText {
  std::u16string text;  // without the mark
  TextEncoding encoding = TextEncoding::CodePage;
};

DecodedText DecodeText(std::string_view bytes);

// With the encoding's mark in front.
std::string EncodeText(std::u16string_view text, TextEncoding encoding);

}  // namespace quillmar::platform
