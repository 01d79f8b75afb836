#include "platform/win32/TemplateDialog.h"

namespace quillmar::platform::win32 {
namespace {

struct OpenDialog {
  const DialogTranslation& translate;
  const DialogBehaviour& behaviour;
};

void Open(HWND dialog, const OpenDialog& state) {
  SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(&state));
  if (state.translate) state.translate(ToWindow(dialog));
  if (state.behaviour.open) state.behaviour.open(dialog);
}

void OnCommand(HWND dialog, const OpenDialog& state, int control, int code) {
  if (control == IDCANCEL) {
    EndDialog(dialog, IDCANCEL);
  } else if (control == IDOK) {
    if (!state.behaviour.accept || state.behaviour.accept(dialog)) EndDialog(dialog, IDOK);
  } else if (state.behaviour.command) {
    state.behaviour.command(dialog, control, code);
  }
}

// Nothing may be thrown into the system's loop: a dialog whose work fails ends as cancelled.
INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  try {
    if (message == WM_INITDIALOG) {
      Open(dialog, *reinterpret_cast<const OpenDialog*>(lParam));
      return TRUE;
    }
    const auto* state = reinterpret_cast<const OpenDialog*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (message != WM_COMMAND || state == nullptr) return FALSE;
    OnCommand(dialog, *state, LOWORD(wParam), HIWORD(wParam));
  } catch (...) {
    EndDialog(dialog, IDCANCEL);
  }
  return TRUE;
}

}  // namespace

bool ShowTemplateDialog(QmModule resources, int dialogTemplate, QmWindow owner,
                        const DialogTranslation& translate, const DialogBehaviour& behaviour) {
  OpenDialog state{translate, behaviour};
  return DialogBoxParamA(static_cast<HMODULE>(resources), MAKEINTRESOURCEA(dialogTemplate),
                         ToOwner(owner), Procedure, reinterpret_cast<LPARAM>(&state)) == IDOK;
}

std::string ControlText(HWND dialog, int control) {
  const HWND window = GetDlgItem(dialog, control);
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return text;
}

}  // namespace quillmar::platform::win32
