// The dialogs of the finished library on the screen of the system, worked by another thread.
#include <atomic>
#include <functional>
#include <thread>

#include "Calculation.h"

// The system's headers, of which the first must come first.
#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

namespace quillmar::contract {
namespace {

const std::string kOptions = kModuleKey + "\\Sheet";

// Works the first dialog of this title that appears.
class User {
 public:
  User(std::string wanted, std::function<void(HWND dialog)> work)
      : title(std::move(wanted)), hand([this, work = std::move(work)] { Wait(work); }) {}
  ~User() {
    givenUp = true;
    hand.join();
  }
  User(const User&) = delete;
  User& operator=(const User&) = delete;

 private:
  void Wait(const std::function<void(HWND)>& work) {
    while (!givenUp) {
      const HWND dialog = FindWindowA("#32770", title.c_str());
      if (dialog != nullptr && IsWindowVisible(dialog) != 0) return work(dialog);
      Sleep(20);
    }
  }

  std::string title;
  std::atomic<bool> givenUp = false;
  std::thread hand;
};

void Press(HWND dialog, int button) {
  PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

class OptionsDialog : public Calculation {
 protected:
  OptionsDialog() {
    for (const char* section : {"\\OptBom", "\\OptGeneral", "\\OptGeneral2", "\\OptKC"}) {
      ClearKey(Hive::CurrentUser, kOptions + section);
    }
    module.SetOptions(nullptr, 0, "Sheet", "", 0);
  }
};

TEST_F(OptionsDialog, TheSheetSavesWhatWasEntered) {
  {
    const User user("Options", [](HWND sheet) {
      SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
      const auto page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
      SetDlgItemTextA(page, 101, "%BOM1%");
      SetDlgItemTextA(page, 111, "Weight");
      SetDlgItemTextA(page, 112, "%Mass%");
      SendDlgItemMessageA(page, 114, BM_CLICK, 0, 0);
      Press(sheet, IDOK);
    });
    EXPECT_EQ(module.ShowOptionsDialog(), 1);
  }
  EXPECT_EQ(TextValue(Hive::CurrentUser, kOptions + "\\OptBom", "TitleExt"), "%BOM1%");
  EXPECT_EQ(TextValue(Hive::CurrentUser, kOptions + "\\OptBom", "User_Weight"), "%Mass%");
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kOptions + "\\OptKC", "PicSize"), 72u);
}

TEST_F(OptionsDialog, TheSheetCanBeCancelled) {
  {
    const User user("Options", [](HWND sheet) { Press(sheet, IDCANCEL); });
    EXPECT_EQ(module.ShowOptionsDialog(), 0);
  }
  EXPECT_EQ(TextValue(Hive::CurrentUser, kOptions + "\\OptBom", "TitleExt"), std::nullopt);
}

TEST_F(OptionsDialog, TheAboutBoxShowsItsText) {
  std::string shown(64, '\0');
  {
    const User user("About it", [&shown](HWND box) {
      shown.resize(GetDlgItemTextA(box, 101, shown.data(), static_cast<int>(shown.size())));
      Press(box, IDOK);
    });
    EXPECT_EQ(module.ShowAboutDlg("About it", "Version 1"), 1);
  }
  EXPECT_EQ(shown, "Version 1");
}

}  // namespace
}  // namespace quillmar::contract
