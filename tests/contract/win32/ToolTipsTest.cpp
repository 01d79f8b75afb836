// The tooltips of the toolbar.
#include "Contract.h"

// The system's headers, of which the first must come first.
#include <windows.h>

#include <commctrl.h>

namespace quillmar::contract {
namespace {

class ToolTips : public Contract {
 protected:
  // What the window of the tips tells of a button of the toolbar.
  static std::string TipOf(HWND button) {
    const HWND toolbar = GetParent(button);
    HWND tips = nullptr;
    do {
      tips = FindWindowExA(nullptr, tips, TOOLTIPS_CLASSA, nullptr);
    } while (tips != nullptr && GetWindow(tips, GW_OWNER) != toolbar);
    char text[80] = "";
    TTTOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.hwnd = toolbar;
    tool.uId = reinterpret_cast<UINT_PTR>(button);
    tool.lpszText = text;
    SendMessageA(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
    return text;
  }
};

TEST_F(ToolTips, TellWhatTheCommandsDo) {
  StartSession();
  module.ShowToolbar(1);
  const HWND toolbar = FindWindowA("#32770", "Machine design");
  ASSERT_NE(IsWindowVisible(toolbar), 0);
  EXPECT_EQ(TipOf(GetDlgItem(toolbar, 0x8005)), "Options of the calculation interface");
  EXPECT_EQ(TipOf(GetDlgItem(toolbar, 0x800C)), "Refresh the links between calculations");
  EXPECT_EQ(TipOf(GetDlgItem(toolbar, 0x800D)), "Write the extended data of all parts again");
}

}  // namespace
}  // namespace quillmar::contract
