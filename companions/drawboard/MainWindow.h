// The CAD's main window: a real window that is never shown.
#pragma once

#include <memory>

#include "platform/Messages.h"

namespace drawboard {

class MainWindow : private quillmar::platform::WindowHandler {
 public:
  explicit MainWindow(QmModule self) : self(self) {}

  // Made when it is asked for the first time; 0 when it cannot be made.
  QmWindow Handle();
  // Forgets the window: the process is ending.
  void Abandon();

 private:
  void OnMessage(unsigned) override {}
  void OnShown() override {}

  QmModule self;
  std::unique_ptr<quillmar::platform::HiddenWindow> window;
};

}  // namespace drawboard
