// Templates: plain texts in which "%NAME%" stands for a value.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace quillmar {

// A value may hold tokens itself, and they are expanded too. A value that names its own token,
// directly or in a ring, would never come to an end: the expansion stops with the text reached
// once this many values with tokens of their own were filled in, or once they made the text longer
// than this.
inline constexpr int kMaxNestedValues = 1000;
inline constexpr std::size_t kMaxNestedLength = 1024 * 1024;

// Value of a token, given without its percent signs and as it is written in the template.
using TokenValue = std::function<std::string(const std::string& token)>;

// Replaces token after token from the left. A lone "%" and what follows it stay. The token
// "subtype" (any case) without a value takes the blanks at the end of the whole text with it.
std::string ExpandNameTemplate(std::string text, const TokenValue& valueOf);

}  // namespace quillmar
