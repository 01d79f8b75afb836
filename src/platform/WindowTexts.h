// Texts that windows and menus show, replaced in place.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

// A menu of the window system; null is none.
using MenuHandle = void*;

// Gets a text as shown and answers what to show instead, or nothing to leave it.
using TextReplacement = std::function<std::optional<std::string>(const std::string&)>;

// Offers the window's own text and then each child's, in the window system's order.
void ReplaceWindowTexts(QmWindow window, const TextReplacement& replacement);

// The menu of a window, null when it has none.
MenuHandle MenuOf(QmWindow window);

// Offers the text of each item (at most 1023 characters) by position, then those of submenus.
// Command identifiers stay. False for no menu.
bool ReplaceMenuTexts(MenuHandle menu, const TextReplacement& replacement);

}  // namespace quillmar::platform
