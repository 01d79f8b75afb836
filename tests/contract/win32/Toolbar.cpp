#include "Toolbar.h"

#include "platform/win32/Win32.h"

namespace quillmar::contract {

using platform::win32::ToHandle;

bool IsShown(QmWindow window) { return IsWindowVisible(ToHandle(window)) != 0; }

bool IsEnabled(QmWindow window, int command) {
  return IsWindowEnabled(GetDlgItem(ToHandle(window), command)) != 0;
}

void Choose(QmWindow window, int command) {
  SendMessageA(GetDlgItem(ToHandle(window), command), BM_CLICK, 0, 0);
}

void ShowFromOutside(QmWindow window) { ShowWindow(ToHandle(window), SW_SHOW); }

}  // namespace quillmar::contract
