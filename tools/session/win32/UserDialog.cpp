#include "session/UserDialog.h"

#include <windows.h>

#include <atomic>
#include <thread>

namespace session {
namespace {

// Controls of the dialog, as the module's resources number them.
constexpr int kName = 101;
constexpr int kViews = 102;
constexpr int kUnits = 103;
constexpr DWORD kPause = 10;  // milliseconds

BOOL CALLBACK TakeUserPartDialog(HWND window, LPARAM found) {
  if (GetDlgItem(window, kUnits) == nullptr || GetDlgItem(window, kViews) == nullptr) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

}  // namespace

// Another thread works the dialog, which keeps the session's own one until it is closed.
struct UserDialog::State {
  State(std::string name, std::string views, int units)
      : name(std::move(name)),
        views(std::move(views)),
        units(units),
        asked(GetCurrentThreadId()),
        hand([this] { Work(); }) {}
  ~State() {
    over = true;
    hand.join();
  }

  void Work() {
    HWND dialog = nullptr;
    while (!over && dialog == nullptr) {
      Sleep(kPause);
      EnumThreadWindows(asked, TakeUserPartDialog, reinterpret_cast<LPARAM>(&dialog));
    }
    if (dialog == nullptr) return;
    SendDlgItemMessageA(dialog, kName, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    SendDlgItemMessageA(dialog, kViews, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(views.c_str()));
    SendDlgItemMessageA(dialog, kUnits, CB_SETCURSEL, static_cast<WPARAM>(units), 0);
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  }

  std::string name;
  std::string views;
  int units;
  DWORD asked;
  std::atomic<bool> over = false;
  std::thread hand;  // last: it uses all of the above
};

UserDialog::UserDialog(const std::string& name, const std::string& views, int units)
    : state(std::make_unique<State>(name, views, units)) {}

UserDialog::~UserDialog() = default;

}  // namespace session
