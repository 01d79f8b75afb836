#include "base/WindowActivator.h"

#include "base/CompanionLoader.h"
#include "platform/ForeignCall.h"
#include "platform/Messages.h"
#include "quillmar/BoltedConnections.h"

namespace quillmar {

void WindowActivator::Bind(const std::string& suiteFolder) {
  library = LoadCompanion({suiteFolder}, QM_FOREGROUND_LIBRARY).library;
  if (library) {
    setForegroundWindow = platform::FindFunction(library.Get(), "McSetForegroundWindow");
  }
}

void WindowActivator::Unbind() {
  setForegroundWindow = nullptr;
  library.Free();
}

void WindowActivator::Activate(QmWindow window) const {
  if (setForegroundWindow != nullptr) {
    ActivateByHelper(window);
  } else {
    platform::BringToForeground(window);
  }
}

void WindowActivator::ActivateByHelper(QmWindow window) const {
  if (setForegroundWindow == nullptr) return;
  const std::uintptr_t words[] = {platform::Word(window)};
  platform::CallForeign(setForegroundWindow, words, 1);
}

}  // namespace quillmar
