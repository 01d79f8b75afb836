// The system's dialogs, answered by a timer of the same thread.
#include "platform/Dialogs.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/Messages.h"
#include "platform/System.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

using namespace std::chrono_literals;

struct SeenDialog {
  std::string title;
  std::string text;  // of its texts together
  LONG extendedStyle = 0;
  bool hasIcon = false;
};

BOOL CALLBACK AppendText(HWND control, LPARAM dialog) {
  char text[512] = "";
  GetWindowTextA(control, text, sizeof text);
  char kind[16] = "";
  GetClassNameA(control, kind, sizeof kind);
  auto& seen = *reinterpret_cast<SeenDialog*>(dialog);
  if (lstrcmpiA(kind, "Static") == 0) seen.text += text;
  seen.hasIcon |= SendMessageA(control, STM_GETICON, 0, 0) != 0;
  return TRUE;
}

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
  char kind[16] = "";
  GetClassNameA(window, kind, sizeof kind);
  if (lstrcmpA(kind, "#32770") != 0 || IsWindowVisible(window) == 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// Looks for the dialog that this thread shows, notes what it says and presses a button.
class Answerer {
 public:
  explicit Answerer(WPARAM button, std::function<void(HWND)> prepare = {})
      : button(button), prepare(std::move(prepare)) {
    Arm();
  }
  ~Answerer() { StopTimer(timer); }

  SeenDialog seen;

 private:
  void Arm() {
    timer = StartTimer(20ms, [this](std::uintptr_t) { Look(); });
  }
  void Look() {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog == nullptr) return Arm();
    char title[256] = "";
    GetWindowTextA(dialog, title, sizeof title);
    seen.title = title;
    seen.extendedStyle = GetWindowLongA(dialog, GWL_EXSTYLE);
    EnumChildWindows(dialog, AppendText, reinterpret_cast<LPARAM>(&seen));
    if (prepare) prepare(dialog);
    PostMessageA(dialog, WM_COMMAND, button, 0);
  }

  WPARAM button;
  std::function<void(HWND)> prepare;
  std::uintptr_t timer = 0;
};

TEST(Dialogs, ShowErrorsOnTopOfAllWindows) {
  Answerer answer(IDOK);
  ShowMessage("B\xb3\xb9\x64 %s %n", "The title", MessageIcon::Error);
  EXPECT_EQ(answer.seen.title, "The title");
  EXPECT_EQ(answer.seen.text, "B\xb3\xb9\x64 %s %n");
  EXPECT_TRUE(answer.seen.hasIcon);
  EXPECT_NE(answer.seen.extendedStyle & WS_EX_TOPMOST, 0);
}

TEST(Dialogs, ShowPlainMessages) {
  Answerer answer(IDOK);
  ShowMessage("first\n\nsecond", "Plain", MessageIcon::None);
  EXPECT_EQ(answer.seen.text, "first\n\nsecond");
  EXPECT_FALSE(answer.seen.hasIcon);
  EXPECT_EQ(answer.seen.extendedStyle & WS_EX_TOPMOST, 0);
}

TEST(Dialogs, AskForAFolderFromTheStartFolderOn) {
  const std::string start = WindowsFolder();
  Answerer choose(IDOK);
  EXPECT_EQ(AskFolder(0, start, "Where to?"), start);
  EXPECT_NE(choose.seen.text.find("Where to?"), std::string::npos);
  Answerer cancel(IDCANCEL);
  EXPECT_EQ(AskFolder(0, start, "Where to?"), std::nullopt);
}

TEST(Dialogs, AskForAFileToSave) {
  const std::string folder = TempFolder();
  SaveQuestion question;
  question.initialPath = folder + "\\Gear 1";
  question.defaultExtension = "prt";
  question.filter = "Part (*.prt)|*.prt|";
  question.title = "Shaft (stepped)";
  Answerer choose(IDOK);
  EXPECT_EQ(AskSaveFile(question), folder + "\\Gear 1.prt");
  EXPECT_EQ(choose.seen.title, "Shaft (stepped)");
  Answerer cancel(IDCANCEL);
  EXPECT_EQ(AskSaveFile(question), std::nullopt);
}

}  // namespace
}  // namespace quillmar::platform
