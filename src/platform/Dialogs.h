// Questions and messages to the user.
#pragma once

#include <optional>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

enum class MessageIcon { None, Error };

// A box with an OK button. The error form stands on top of all windows.
void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon);

// Lets the user pick a file-system folder, starting at `start`; nothing when cancelled. The
// result has no trailing backslash unless it is a drive's root.
std::optional<std::string> AskFolder(QmWindow owner, const std::string& start,
                                     const std::string& prompt);

struct SaveQuestion {
  QmWindow owner = 0;
  std::string initialPath;       // folder and proposed file name
  std::string defaultExtension;  // without dot
  std::string filter;            // "description|pattern|" pairs
  std::string title;
};

// The system's save dialog (hides read-only, asks before overwriting): full path, nothing when
// cancelled.
std::optional<std::string> AskSaveFile(const SaveQuestion& question);

}  // namespace quillmar::platform
