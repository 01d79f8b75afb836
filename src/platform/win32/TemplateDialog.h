// Modal dialogs made from a template of the module's resources.
#pragma once

#include <functional>

#include "platform/Dialogs.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform::win32 {

// What a dialog does beyond being translated, placed and closed.
struct DialogBehaviour {
  std::function<void(HWND dialog)> open;    // fills the controls
  std::function<bool(HWND dialog)> accept;  // the user confirms; false keeps the dialog open
  // A control tells something (its identifier and code).
  std::function<void(HWND dialog, int control, int code)> command;
};

// True when the user confirmed; false when he cancelled or the dialog could not be made.
bool ShowTemplateDialog(QmModule resources, int dialogTemplate, QmWindow owner,
                        const DialogTranslation& translate, const DialogBehaviour& behaviour);

std::string ControlText(HWND dialog, int control);

}  // namespace quillmar::platform::win32
