// Windows of the native machine are only ends of the message queue: they show no texts and have
// no menus.
#include "platform/WindowTexts.h"

namespace quillmar::platform {

void ReplaceWindowTexts(QmWindow, const TextReplacement&) {}

MenuHandle MenuOf(QmWindow) { return nullptr; }

bool ReplaceMenuTexts(MenuHandle menu, const TextReplacement&) { return menu != nullptr; }

}  // namespace quillmar::platform
