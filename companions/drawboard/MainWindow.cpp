#include "drawboard/MainWindow.h"

#include "drawboard/win32/Resources.h"

namespace drawboard {

QmWindow MainWindow::Handle() {
  using quillmar::platform::HiddenWindow;
  if (!window) window = HiddenWindow::Create(self, DRAWBOARD_MAIN_WINDOW, *this);
  return window ? window->Handle() : 0;
}

void MainWindow::Abandon() {
  if (window) window->Abandon();
}

}  // namespace drawboard
