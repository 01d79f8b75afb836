// The module's toolbar as its user sees it.
#pragma once

#include "quillmar/Conventions.h"

namespace quillmar::contract {

bool IsShown(QmWindow window);
bool IsEnabled(QmWindow window, int command);
// Clicks an enabled command.
void Choose(QmWindow window, int command);
// Somebody else shows the window.
void ShowFromOutside(QmWindow window);

}  // namespace quillmar::contract
