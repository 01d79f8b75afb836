// The module's dialogs as hidden windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "platform/Messages.h"
#include "platform/win32/Win32.h"
#include "resource.h"

#include <commctrl.h>

namespace quillmar::platform {
namespace {

using testing::ElementsAre;

class Recorder final : public WindowHandler {
 public:
  void OnMessage(unsigned message) override {
    messages.push_back(message);
    if (onMessage) onMessage();
  }
  void OnShown() override { ++timesShown; }

  std::vector<unsigned> messages;
  int timesShown = 0;
  std::function<void()> onMessage;
};

class HiddenWindowTest : public testing::Test {
 protected:
  std::unique_ptr<HiddenWindow> Make(int dialogTemplate) {
    return HiddenWindow::Create(GetModuleHandleA(nullptr), dialogTemplate, recorder);
  }
  const unsigned first = RegisterMessage("QuillmarTestFirst");
  const unsigned second = RegisterMessage("QuillmarTestSecond");
  Recorder recorder;
};

TEST_F(HiddenWindowTest, IsMadeFromTheTemplatesOfTheModule) {
  const auto callback = Make(IDD_CALLBACK_WINDOW);
  const auto helper = Make(IDD_HELPER_WINDOW);
  ASSERT_NE(callback, nullptr);
  ASSERT_NE(helper, nullptr);
  const HWND toolbar = win32::ToHandle(callback->Handle());
  for (int command : {ID_TOOLBAR_OPTIONS, ID_TOOLBAR_REFRESH_LINKS, ID_TOOLBAR_UPDATE_DATA}) {
    EXPECT_NE(GetDlgItem(toolbar, command), nullptr) << command;
  }
  EXPECT_EQ(GetDlgItem(win32::ToHandle(helper->Handle()), ID_TOOLBAR_OPTIONS), nullptr);
  char title[16] = "";
  GetWindowTextA(toolbar, title, sizeof title);
  EXPECT_STREQ(title, "~63");
  EXPECT_EQ(GetWindow(toolbar, GW_OWNER), nullptr);
  EXPECT_FALSE(IsWindowVisible(toolbar));
}

TEST_F(HiddenWindowTest, HearsMessagesWithoutATemplateToo) {
  const auto window = Make(4999);
  ASSERT_NE(window, nullptr);
  PostToWindow(window->Handle(), first);
  PostToWindow(window->Handle(), WM_APP);
  PumpMessages();
  EXPECT_THAT(recorder.messages, ElementsAre(first));
}

TEST_F(HiddenWindowTest, TellsWhenSomebodyShowsIt) {
  const auto window = Make(IDD_CALLBACK_WINDOW);
  const HWND handle = win32::ToHandle(window->Handle());
  window->Show(true);
  EXPECT_EQ(recorder.timesShown, 1);
  EXPECT_TRUE(IsWindowVisible(handle));
  window->Show(false);
  EXPECT_EQ(recorder.timesShown, 1);
  EXPECT_FALSE(IsWindowVisible(handle));
  ShowWindow(handle, SW_SHOW);  // somebody else
  EXPECT_EQ(recorder.timesShown, 2);
  SendMessageA(handle, WM_CLOSE, 0, 0);
  EXPECT_FALSE(IsWindowVisible(handle));
  EXPECT_TRUE(IsLiveWindow(window->Handle()));
}

TEST_F(HiddenWindowTest, MayBeDestroyedByItsHandler) {
  auto window = Make(IDD_CALLBACK_WINDOW);
  const QmWindow handle = window->Handle();
  recorder.onMessage = [&] { window.reset(); };
  PostToWindow(handle, first);
  PostToWindow(handle, second);
  PumpMessages();
  EXPECT_THAT(recorder.messages, ElementsAre(first));
  EXPECT_FALSE(IsLiveWindow(handle));
  EXPECT_FALSE(PostToWindow(handle, first));
}

TEST_F(HiddenWindowTest, LetsNothingThrownOut) {
  const auto window = Make(IDD_CALLBACK_WINDOW);
  recorder.onMessage = [] { throw std::runtime_error("handler"); };
  PostToWindow(window->Handle(), first);
  PostToWindow(window->Handle(), second);
  PumpMessages();
  EXPECT_THAT(recorder.messages, ElementsAre(first, second));
}

TEST_F(HiddenWindowTest, NoticesThatTheHostDestroyedIt) {
  const auto window = Make(IDD_CALLBACK_WINDOW);
  DestroyWindow(win32::ToHandle(window->Handle()));
  EXPECT_EQ(window->Handle(), 0U);
  window->Show(true);
  EXPECT_EQ(recorder.timesShown, 0);
}

TEST_F(HiddenWindowTest, AnswersToolTipsFromTheStringTable) {
  const auto window = Make(IDD_CALLBACK_WINDOW);
  const HWND dialog = win32::ToHandle(window->Handle());
  NMTTDISPINFOA byNumber{};
  byNumber.hdr = {dialog, ID_TOOLBAR_OPTIONS, static_cast<UINT>(TTN_GETDISPINFOA)};
  SendMessageA(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&byNumber));
  EXPECT_STREQ(byNumber.lpszText, "Options of the calculation interface");
  NMTTDISPINFOW byWindow{};
  byWindow.hdr = {dialog, reinterpret_cast<UINT_PTR>(GetDlgItem(dialog, ID_TOOLBAR_REFRESH_LINKS)),
                  static_cast<UINT>(TTN_GETDISPINFOW)};
  byWindow.uFlags = TTF_IDISHWND;
  SendMessageW(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&byWindow));
  EXPECT_STREQ(byWindow.lpszText, L"Refresh the links between calculations");
  NMTTDISPINFOA unknown{};
  unknown.hdr = {dialog, 1, static_cast<UINT>(TTN_GETDISPINFOA)};
  SendMessageA(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&unknown));
  EXPECT_EQ(unknown.lpszText, nullptr);
}

// The tooltip window belongs to the dialog and knows every button once it was shown.
TEST_F(HiddenWindowTest, GivesItsButtonsToolTips) {
  const auto window = Make(IDD_CALLBACK_WINDOW);
  window->Show(true);
  window->Show(true);
  int tips = 0;
  LRESULT tools = 0;
  HWND tip = nullptr;
  while ((tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr) {
    if (GetWindow(tip, GW_OWNER) != win32::ToHandle(window->Handle())) continue;
    ++tips;
    tools = SendMessageA(tip, TTM_GETTOOLCOUNT, 0, 0);
  }
  EXPECT_EQ(tips, 1);
  EXPECT_EQ(tools, 3);
}

}  // namespace
}  // namespace quillmar::platform
