#include "platform/win32/TemplateDialog.h"

namespace quillmar::platform {
namespace {

// The template and its controls, as the module's resources have them.
constexpr int kTemplate = 4007;
constexpr int kName = 101;
constexpr int kViews = 102;
constexpr int kUnits = 103;

}  // namespace

std::optional<UserPartAnswer> AskUserPart(QmModule resources, QmWindow owner,
                                          const DialogTranslation& translate) {
  UserPartAnswer answer;
  const win32::DialogBehaviour behaviour{
      .open =
          [](HWND dialog) {
            for (const char* unit : {"mm", "in"}) {
              SendDlgItemMessageA(dialog, kUnits, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(unit));
            }
          },
      .accept =
          [&answer](HWND dialog) {
            answer.name = win32::ControlText(dialog, kName);
            answer.views = win32::ControlText(dialog, kViews);
            answer.units =
                static_cast<int>(SendDlgItemMessageA(dialog, kUnits, CB_GETCURSEL, 0, 0));
            return true;
          },
      .command = {}};
  const bool confirmed =
      win32::ShowTemplateDialog(resources, kTemplate, owner, translate, behaviour);
  return confirmed ? std::optional(answer) : std::nullopt;
}

}  // namespace quillmar::platform
