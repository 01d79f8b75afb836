// Tooltips of a dialog: a control has the text that the string table of the dialog's library holds
// under the control's identifier.
#pragma once

#include "platform/win32/Win32.h"

namespace quillmar::platform::win32 {

// Gives every control of the dialog a tooltip whose text is asked for when it is needed.
void AddToolTips(HWND dialog);

// Answers a notification that asks for a tooltip's text; false when it is none, or when there is
// no such string.
bool AnswerToolTipRequest(HMODULE resources, NMHDR* notification);

}  // namespace quillmar::platform::win32
