// The system code page of the native machine, Windows-1250, against Unicode: file names of the
// host are UTF-8, registry files and profile files may be UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace quillmar::platform {

// Every byte has a character of its own (the five bytes that the code page leaves free stand for
// control characters), so narrowing what was widened gives back the same bytes.
std::u16string Widen(std::string_view bytes);

// Characters outside the code page become '?'.
std::string Narrow(std::u16string_view text);

bool FitsCodePage(std::u16string_view text);

std::string ToUtf8(std::u16string_view text);
// Bytes that are no valid UTF-8 become the replacement character.
std::u16string FromUtf8(std::string_view utf8);

// Casing of one character of the code page.
char UpperCharacter(char character);
char LowerCharacter(char character);

// The form in which names are compared: lower case for the letters of the code page.
char16_t FoldCharacter(char16_t character);
std::u16string Fold(std::u16string_view text);

}  // namespace quillmar::platform
