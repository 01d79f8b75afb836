// The controls of a form's fields.
#pragma once

#include "platform/Forms.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform::win32 {

// Fills all controls and hides those that are not shown.
void FillControls(HWND dialog, const Form& form);
// Takes over what the controls hold.
void ReadControls(HWND dialog, Form& form);
// What a control tells (WM_COMMAND and WM_NOTIFY).
void OnControl(HWND dialog, Form& form, int control, int code);
void OnListSelection(HWND dialog, Form& form, int control);

}  // namespace quillmar::platform::win32
