// A window that shows how far long work has come.
#pragma once

#include <memory>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

// Shown from Create on, destroyed with the object. It paints itself at once and lets no messages
// through, so that the work is not entered again.
class ProgressWindow {
 public:
  virtual ~ProgressWindow() = default;
  virtual void ShowText(const std::string& text) = 0;

  // Above `owner`, which may be 0; null when the window could not be made.
  static std::unique_ptr<ProgressWindow> Create(QmWindow owner, const std::string& title);
};

}  // namespace quillmar::platform
