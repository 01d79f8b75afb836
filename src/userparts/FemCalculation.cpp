#include "userparts/FemCalculation.h"

#include "platform/Dialogs.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kPrefix = "FEM";
constexpr const char* kExtension = "dxf";
constexpr const char* kFilter = "DXF (*.dxf)|*.dxf|";
constexpr const char* kDataFile = "Symbols|tarnelo";
constexpr const char* kDxfFileKeyword = "FEMDxfFile";

struct GlobalRow {
  const char* item;
  const char* value;
};
constexpr GlobalRow kGlobals[] = {
    {global::kStandard, "ISO"}, {global::kPreferredStandard, "ISO"}, {global::kLanguage, "NO"}};

// Where the user wants the drawing when the temporary folder takes no file; empty when he cancels.
std::string AskDrawingPath(const PartServices& services) {
  return platform::AskSaveFile({.owner = MainWindow(services.driver),
                                .initialPath = std::string(kPrefix) + "." + kExtension,
                                .defaultExtension = kExtension,
                                .filter = kFilter,
                                .title = ""})
      .value_or("");
}

bool Describe(VXProtocol& protocol, const std::string& drawing) {
  for (const GlobalRow& row : kGlobals) {
    if (!protocol.PutGlobalData(row.item, row.value)) return false;
  }
  return protocol.PutKeyWord(section::kMain, keyword::kDataFile, kDataFile) &&
         protocol.PutCadx(keyword::kRecalcAgain, "1") && protocol.PutCadx(kDxfFileKeyword, drawing);
}

}  // namespace

int CallFem(const PartServices& services) {
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return 0;
  const std::string temporary = platform::MakeTempFile(platform::TempFolder(), kPrefix, kExtension);
  const std::string drawing = temporary.empty() ? AskDrawingPath(services) : temporary;
  if (drawing.empty()) return 0;
  if (services.driver.CreateDxfFile(drawing.c_str()) == 0 || !Describe(protocol, drawing)) {
    // A file that the user named may have been there before.
    if (!temporary.empty()) platform::RemoveFile(temporary);
    return 0;
  }
  services.host.ShowCalculation(protocol.GetProtocolID());
  return 1;
}

}  // namespace quillmar
