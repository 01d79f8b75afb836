#include "platform/Progress.h"

#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

// Pixels.
constexpr int kWidth = 280;
constexpr int kHeight = 90;
constexpr int kLineTop = 16;
constexpr int kLineHeight = 20;

class StaticWindow : public ProgressWindow {
 public:
  StaticWindow(HWND owner, const std::string& title) {
    const int left = (GetSystemMetrics(SM_CXSCREEN) - kWidth) / 2;
    const int top = (GetSystemMetrics(SM_CYSCREEN) - kHeight) / 2;
    frame = CreateWindowExA(WS_EX_DLGMODALFRAME | WS_EX_NOACTIVATE, "STATIC", title.c_str(),
                            WS_POPUP | WS_CAPTION, left, top, kWidth, kHeight,
                            IsWindow(owner) ? owner : nullptr, nullptr, nullptr, nullptr);
    if (frame == nullptr) return;
    line = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE | SS_CENTER, 0, kLineTop, kWidth,
                           kLineHeight, frame, nullptr, nullptr, nullptr);
    ShowWindow(frame, SW_SHOWNOACTIVATE);
    UpdateWindow(frame);
  }
  ~StaticWindow() override {
    if (frame != nullptr) DestroyWindow(frame);
  }
  StaticWindow(const StaticWindow&) = delete;
  StaticWindow& operator=(const StaticWindow&) = delete;

  bool IsMade() const { return line != nullptr; }

  void ShowText(const std::string& text) override {
    SetWindowTextA(line, text.c_str());
    UpdateWindow(line);
  }

 private:
  HWND frame = nullptr;
  HWND line = nullptr;
};

}  // namespace

std::unique_ptr<ProgressWindow> ProgressWindow::Create(QmWindow owner, const std::string& title) {
  auto window = std::make_unique<StaticWindow>(win32::ToOwner(owner), title);
  if (!window->IsMade()) return nullptr;
  return window;
}

}  // namespace quillmar::platform
