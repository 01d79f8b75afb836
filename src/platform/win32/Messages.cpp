#include "platform/Messages.h"

#include "platform/win32/MessageQueue.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {

namespace win32 {

MessageQueue::~MessageQueue() {
  if (quitCode) PostQuitMessage(*quitCode);
}

void MessageQueue::Pump() {
  MSG message;
  // The wide forms suit the host's windows of both kinds.
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      quitCode = static_cast<int>(message.wParam);
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace win32

unsigned RegisterMessage(const std::string& name) { return RegisterWindowMessageA(name.c_str()); }

bool PostToWindow(QmWindow window, unsigned message) {
  // Without a window the message would go to the thread, where nobody looks for it.
  return window != 0 && PostMessageA(win32::ToHandle(window), message, 0, 0) != 0;
}

void SendToWindow(QmWindow window, unsigned message) {
  constexpr UINT kPatience = 5000;  // milliseconds
  DWORD_PTR result = 0;
  if (window == 0) return;
  SendMessageTimeoutA(win32::ToHandle(window), message, 0, 0, SMTO_ABORTIFHUNG, kPatience, &result);
}

bool IsLiveWindow(QmWindow window) { return IsWindow(win32::ToHandle(window)) != 0; }

void BringToForeground(QmWindow window) { SetForegroundWindow(win32::ToHandle(window)); }

void PumpMessages() { win32::MessageQueue().Pump(); }

}  // namespace quillmar::platform
