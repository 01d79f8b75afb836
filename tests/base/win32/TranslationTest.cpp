// Placeholders in the texts of real windows and menus.
#include <gmock/gmock.h>

#include "base/LanguageTable.h"
#include "platform/win32/Win32.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

class Translation : public testing::Test {
 protected:
  Translation() {
    machine.WriteFile(
        machine.InFolder("Quillmar.lng"),
        "[0]\r\nEN=None\r\n[7]\r\nEN=Shaft\r\n[8]\r\nEN=Parts\r\n[4010]\r\nEN=Two\\nlines\r\n");
    EXPECT_TRUE(table.Load(machine.InFolder("Quillmar.lng"), "EN"));
  }
  ~Translation() override { DestroyWindow(window); }

  static HWND Make(const char* text, HWND parent, HMENU menu = nullptr) {
    const DWORD style = parent != nullptr ? WS_CHILD : WS_OVERLAPPED;
    return CreateWindowExA(0, "STATIC", text, style, 0, 0, 9, 9, parent, menu, nullptr, nullptr);
  }
  static std::string TextOf(HWND shown) {
    char text[64] = "";
    GetWindowTextA(shown, text, sizeof text);
    return text;
  }
  static std::vector<std::string> TextsOf(HMENU shown) {
    std::vector<std::string> texts;
    for (int i = 0; i < GetMenuItemCount(shown); ++i) {
      char text[64] = "";
      GetMenuStringA(shown, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
      texts.emplace_back(text);
    }
    return texts;
  }

  TestMachine machine;
  LanguageTable table;
  HMENU menu = CreateMenu();
  HMENU submenu = CreatePopupMenu();
  HWND window = nullptr;
};

TEST_F(Translation, OfAWindowItsChildrenAndItsMenu) {
  AppendMenuA(submenu, MF_STRING, 102, "~4010");
  AppendMenuA(menu, MF_STRING, 101, "~7");
  AppendMenuA(menu, MF_STRING | MF_GRAYED, 103, "7");
  AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu), "~8");
  window = Make("~7", nullptr, menu);
  const HWND plain = Make("4010", window);
  const HWND inside = Make("x~4010", window);
  const HWND lines = Make("~4010", window);
  const HWND missing = Make("~9", window);
  const HWND word = Make("~word", window);
  const HWND grandchild = Make("~7", plain);

  EXPECT_TRUE(table.TranslateWindow(platform::win32::ToWindow(window)));
  EXPECT_EQ(TextOf(window), "Shaft");
  EXPECT_EQ(TextOf(plain), "4010");
  EXPECT_EQ(TextOf(inside), "x~4010");
  EXPECT_EQ(TextOf(lines), "Two\nlines");
  EXPECT_EQ(TextOf(missing), "");
  EXPECT_EQ(TextOf(word), "None");
  EXPECT_EQ(TextOf(grandchild), "~7") << "only the window's own children";
  EXPECT_THAT(TextsOf(menu), ElementsAre("Shaft", "7", "Parts"));
  EXPECT_THAT(TextsOf(submenu), ElementsAre("Two\nlines"));
  EXPECT_EQ(GetMenuItemID(menu, 0), 101u);
  EXPECT_EQ(GetMenuItemID(submenu, 0), 102u);
  EXPECT_EQ(GetSubMenu(menu, 2), submenu);
  EXPECT_NE(GetMenuState(menu, 103, MF_BYCOMMAND) & MF_GRAYED, 0u) << "it stays as it was";
}

TEST_F(Translation, OfNothing) {
  EXPECT_FALSE(table.TranslateMenu(nullptr));
  EXPECT_TRUE(table.TranslateWindow(0));
}

}  // namespace
}  // namespace quillmar
