#include <utility>

#include "platform/Messages.h"
#include "platform/win32/ToolTips.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

constexpr UINT kFirstRegisteredMessage = 0xC000;

// A dialog without controls, for a program that has no templates.
struct EmptyDialog {
  DLGTEMPLATE header{WS_POPUP | WS_CAPTION, 0, 0, 0, 0, 80, 20};
  WORD menu = 0;
  WORD windowClass = 0;
  WORD title = 0;
};
constexpr EmptyDialog kEmptyDialog;

class DialogWindow final : public HiddenWindow {
 public:
  DialogWindow(QmModule resources, WindowHandler& handler)
      : resources(static_cast<HMODULE>(resources)), handler(handler) {}
  ~DialogWindow() override;
  DialogWindow(const DialogWindow&) = delete;
  DialogWindow& operator=(const DialogWindow&) = delete;

  bool Make(int dialogTemplate);
  QmWindow Handle() const override { return win32::ToWindow(handle); }
  void Show(bool visible) override;
  void EnableCommand(int command, bool enabled) override;
  void Abandon() override { Forget(); }

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam);
  HWND MakeEmpty(HWND parent);
  HWND Forget();

  HMODULE resources;
  WindowHandler& handler;
  HWND handle = nullptr;
  bool hasToolTips = false;
};

DialogWindow::~DialogWindow() {
  const HWND dialog = Forget();
  if (dialog == nullptr || DestroyWindow(dialog) != 0) return;
  // Only the window's own thread can destroy it. It must not call into an unloaded library.
  SetWindowLongPtrA(dialog, DWLP_DLGPROC, 0);
}

// From now on the window, wherever it lives on, tells nothing to this object.
HWND DialogWindow::Forget() {
  if (handle != nullptr) SetWindowLongPtrA(handle, GWLP_USERDATA, 0);
  return std::exchange(handle, nullptr);
}

// Where the library has no template, or the session no screen, there must still be a window to
// post messages to.
bool DialogWindow::Make(int dialogTemplate) {
  handle = CreateDialogParamA(resources, MAKEINTRESOURCEA(dialogTemplate), GetDesktopWindow(),
                              Procedure, reinterpret_cast<LPARAM>(this));
  if (handle == nullptr) handle = MakeEmpty(GetDesktopWindow());
  if (handle == nullptr) handle = MakeEmpty(HWND_MESSAGE);
  return handle != nullptr;
}

HWND DialogWindow::MakeEmpty(HWND parent) {
  return CreateDialogIndirectParamA(resources, &kEmptyDialog.header, parent, Procedure,
                                    reinterpret_cast<LPARAM>(this));
}

void DialogWindow::Show(bool visible) {
  if (visible && !std::exchange(hasToolTips, true)) win32::AddToolTips(handle);
  ShowWindow(handle, visible ? SW_SHOWNORMAL : SW_HIDE);
}

void DialogWindow::EnableCommand(int command, bool enabled) {
  const HWND control = handle != nullptr ? GetDlgItem(handle, command) : nullptr;
  if (control != nullptr) EnableWindow(control, enabled ? TRUE : FALSE);
}

INT_PTR CALLBACK DialogWindow::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrA(dialog, GWLP_USERDATA, lParam);
    return FALSE;  // leaves the focus where it is
  }
  auto* self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrA(dialog, GWLP_USERDATA));
  if (self == nullptr) return FALSE;
  try {
    return self->OnDialogMessage(message, wParam, lParam);
  } catch (...) {
    OutputDebugStringA("A window message's work ended with an exception\n");
    return TRUE;
  }
}

// The handler may destroy this object: nothing of it is touched after a call.
INT_PTR DialogWindow::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message >= kFirstRegisteredMessage) {
    handler.OnMessage(message);
    return TRUE;
  }
  switch (message) {
    case WM_SHOWWINDOW:
      if (wParam != 0) handler.OnShown();
      return FALSE;
    case WM_COMMAND:
      if (HIWORD(wParam) == BN_CLICKED) handler.OnCommand(LOWORD(wParam));
      return FALSE;
    case WM_NOTIFY:
      return win32::AnswerToolTipRequest(resources, reinterpret_cast<NMHDR*>(lParam));
    case WM_CLOSE:
      ShowWindow(handle, SW_HIDE);
      return TRUE;
    case WM_NCDESTROY:
      Forget();
      return FALSE;
    default:
      return FALSE;
  }
}

}  // namespace

std::unique_ptr<HiddenWindow> HiddenWindow::Create(QmModule resources, int dialogTemplate,
                                                   WindowHandler& handler) {
  auto window = std::make_unique<DialogWindow>(resources, handler);
  if (!window->Make(dialogTemplate)) return nullptr;
  return window;
}

}  // namespace quillmar::platform
