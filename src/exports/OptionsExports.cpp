// Exports around options, captions, bills of materials and parameter lists.
#include <cstring>

#include "Forward.h"
#include "bom/ExtDataPairs.h"
#include "commands/CreateFileName.h"
#include "commands/ExtendedDataRefresh.h"
#include "commands/OptionsCommands.h"
#include "parts/VXPart.h"
#include "platform/Dialogs.h"
#include "quillmar/Exports.h"

using quillmar::Forward;
using quillmar::QuillmarApp;
using quillmar::Text;

namespace {

void CopyText(char* out, const std::string& text) {
  if (out != nullptr) std::memcpy(out, text.c_str(), text.size() + 1);
}

// A list for a caller's buffer: 0, and the length it needs, when it does not fit.
int GiveList(const std::string& list, char* out, int* size) {
  const auto room = size != nullptr && *size > 0 ? static_cast<std::size_t>(*size) : 0;
  if (size != nullptr) *size = static_cast<int>(list.size());
  if (out == nullptr || list.size() > room) return 0;
  CopyText(out, list);
  return 1;
}

}  // namespace

int QM_CDECL AddBomTag(const char* group, const char* name, const char* key) {
  return Forward("AddBomTag", 0, [&](QuillmarApp& app) {
    app.Services().tags.AddBomTag(Text(group), Text(name), Text(key));
    return 1;
  });
}

int QM_CDECL SetDefaultUserBTSection(const char* section) {
  return Forward("SetDefaultUserBTSection", 0, [&](QuillmarApp& app) {
    app.Services().tags.SetDefaultUserSection(Text(section));
    return 1;
  });
}

int QM_CDECL DeleteBomInfo(ExtDataPair* pairs, int count) {
  quillmar::FreeExtDataPairs(pairs, count);
  return 1;
}

int QM_CDECL UpdateExtendedData(void) {
  return Forward("UpdateExtendedData", 0,
                 [](QuillmarApp& app) { return quillmar::UpdateExtendedData(app.Services()); });
}

int QM_CDECL CreateFileName(const char* protocolId, char* tagsOut, char* valuesOut) {
  return Forward("CreateFileName", 0, [&](QuillmarApp& app) {
    const auto texts = quillmar::CreateFileName(app.Services(), Text(protocolId));
    if (!texts) return 0;
    CopyText(tagsOut, texts->tags);
    CopyText(valuesOut, texts->values);
    return 1;
  });
}

int QM_CDECL GetUnitList(const char* protocolId, char* out, int* size) {
  return Forward("GetUnitList", 0, [&](QuillmarApp& app) {
    quillmar::VXProtocol protocol(app.Services().protocols);
    if (!protocol.AttachExisting(Text(protocolId))) return 0;
    std::string list;
    quillmar::VXPart(app.Services(), protocol)
        .BuildParameterList(list, {}, quillmar::ListForm::Units);
    return GiveList(list, out, size);
  });
}

int QM_CDECL SetOptions(const QmOptionsPage* const* pages, int count, const char* applicationKey,
                        const char* helpFile, unsigned helpContext) {
  return Forward("SetOptions", 0, [&](QuillmarApp& app) {
    quillmar::SetOptions(app.Services(), reinterpret_cast<const void* const*>(pages), count,
                         Text(applicationKey), Text(helpFile), helpContext);
    return 0;
  });
}

int QM_CDECL ShowOptionsDialog(void) {
  return Forward("ShowOptionsDialog", 0, [](QuillmarApp& app) {
    return quillmar::ShowOptionsDialog(app.Services()) ? 1 : 0;
  });
}

int QM_CDECL ShowAboutDlg(const char* title, const char* text) {
  return Forward("ShowAboutDlg", 0, [&](QuillmarApp& app) {
    const quillmar::PartServices& services = app.Services();
    const bool shown = quillmar::platform::ShowAbout(
        services.paths.Self(), quillmar::MainWindow(services.driver), Text(title), Text(text),
        [&](QmWindow dialog) { services.texts.TranslateWindow(dialog); });
    return shown ? 1 : 0;
  });
}
