#include "UserDialog.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <cstring>
#include <optional>
#include <thread>

namespace quillmar::contract {
namespace {

// Controls of the dialog, which the library's resources number.
constexpr int kName = 101;
constexpr int kViews = 102;
constexpr int kUnits = 103;

constexpr int kTries = 1000;
constexpr DWORD kPause = 10;  // milliseconds

struct Answer {
  std::string name;
  std::string views;
  int units;
};

BOOL CALLBACK TakeUserPartDialog(HWND window, LPARAM found) {
  if (GetDlgItem(window, kUnits) == nullptr || GetDlgItem(window, kViews) == nullptr) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND WaitForDialog(DWORD thread) {
  HWND dialog = nullptr;
  for (int i = 0; i < kTries && dialog == nullptr; ++i) {
    Sleep(kPause);
    EnumThreadWindows(thread, TakeUserPartDialog, reinterpret_cast<LPARAM>(&dialog));
  }
  return dialog;
}

}  // namespace

// Another thread plays the user while the dialog keeps the test's own one.
struct UserDialog::State {
  explicit State(std::optional<Answer> given)
      : answer(std::move(given)), asked(GetCurrentThreadId()), user([this] { Play(); }) {}

  void Play() {
    HWND dialog = WaitForDialog(asked);
    seen = dialog != nullptr;
    if (!seen) return;
    if (answer) {
      SendDlgItemMessageA(dialog, kName, WM_SETTEXT, 0,
                          reinterpret_cast<LPARAM>(answer->name.c_str()));
      SendDlgItemMessageA(dialog, kViews, WM_SETTEXT, 0,
                          reinterpret_cast<LPARAM>(answer->views.c_str()));
      SendDlgItemMessageA(dialog, kUnits, CB_SETCURSEL, static_cast<WPARAM>(answer->units), 0);
    }
    PostMessageA(dialog, WM_COMMAND, answer ? IDOK : IDCANCEL, 0);
  }

  std::optional<Answer> answer;
  DWORD asked;
  bool seen = false;
  std::thread user;
};

UserDialog::UserDialog() : state(new State(std::nullopt)) {}

UserDialog::UserDialog(const std::string& name, const std::string& views, int units)
    : state(new State(Answer{name, views, units})) {}

UserDialog::~UserDialog() {
  state->user.join();
  EXPECT_TRUE(state->seen) << "no dialog was shown";
  delete state;
}

struct UserWhoLeaves::State {
  State() : asked(GetCurrentThreadId()), user([this] { Play(); }) {}

  void Play() {
    while (!gone) {
      EnumThreadWindows(asked, Leave, 0);
      Sleep(kPause);
    }
  }
  static BOOL CALLBACK Leave(HWND window, LPARAM) {
    char kind[16] = "";
    GetClassNameA(window, kind, sizeof kind);
    const bool isDialog = std::strcmp(kind, "#32770") == 0 && IsWindowVisible(window) != 0;
    if (isDialog) PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
    return TRUE;
  }

  DWORD asked;
  std::atomic<bool> gone = false;
  std::thread user;
};

UserWhoLeaves::UserWhoLeaves() : state(new State) {}

UserWhoLeaves::~UserWhoLeaves() {
  state->gone = true;
  state->user.join();
  delete state;
}

}  // namespace quillmar::contract
