// Brings windows of other programs to the front, with the suite's helper library when it is there.
#pragma once

#include <string>

#include "platform/Modules.h"
#include "quillmar/Conventions.h"

namespace quillmar {

class WindowActivator {
 public:
  // Loads the helper; a missing library or function is no failure.
  void Bind(const std::string& suiteFolder);
  void Unbind();
  // For a process that is ending: forgets the library without freeing it.
  void Abandon() { library.Release(); }

  // By the helper, or by the window system when there is no helper.
  void Activate(QmWindow window) const;
  // By the helper only; without it nothing happens.
  void ActivateByHelper(QmWindow window) const;

 private:
  platform::Library library;
  void* setForegroundWindow = nullptr;
};

}  // namespace quillmar
