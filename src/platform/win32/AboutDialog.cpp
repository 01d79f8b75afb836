#include "platform/win32/TemplateDialog.h"

namespace quillmar::platform {
namespace {

// The template and its control, as the module's resources have them.
constexpr int kTemplate = 4001;
constexpr int kText = 101;

}  // namespace

bool ShowAbout(QmModule resources, QmWindow owner, const std::string& title,
               const std::string& text, const DialogTranslation& translate) {
  bool shown = false;
  win32::ShowTemplateDialog(resources, kTemplate, owner, translate,
                            {.open =
                                 [&](HWND dialog) {
                                   SetWindowTextA(dialog, title.c_str());
                                   SetDlgItemTextA(dialog, kText, text.c_str());
                                   shown = true;
                                 },
                             .accept = {},
                             .command = {}});
  return shown;
}

}  // namespace quillmar::platform
