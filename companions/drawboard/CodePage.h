// Texts of the module's world are bytes in Windows-1250; JSON texts are UTF-8. The five bytes that
// the code page leaves open stand for the control characters of the same number, so every byte
// goes to UTF-8 and comes back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace drawboard {

std::string ToUtf8(std::string_view bytes);

// Nothing when the text is not UTF-8 or holds a character that the code page lacks.
std::optional<std::string> FromUtf8(std::string_view utf8);

}  // namespace drawboard
