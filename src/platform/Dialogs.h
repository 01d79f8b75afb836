// Questions and messages to the user.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

enum class MessageIcon { None, Error };

// Called with a dialog made from a template before it is shown, to put its texts into the user's
// language. Empty: the texts stay as the template has them.
using DialogTranslation = std::function<void(QmWindow dialog)>;

// A box with an OK button. The error form stands on top of all windows.
void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon);

// The box that tells what the program is, made from template 4001 of `resources`. False when it
// could not be made.
bool ShowAbout(QmModule resources, QmWindow owner, const std::string& title,
               const std::string& text, const DialogTranslation& translate = {});

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

// What the user says about a part that becomes a template of his own.
struct UserPartAnswer {
  std::string name;
  std::string views;
  int units = -1;  // 0 mm, 1 in, -1 when none was chosen
};

// The dialog for it, made from template 4007 of `resources` and modal to `owner`; nothing when
// cancelled.
std::optional<UserPartAnswer> AskUserPart(QmModule resources, QmWindow owner,
                                          const DialogTranslation& translate = {});

}  // namespace quillmar::platform
