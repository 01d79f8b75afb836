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

// Asks the user when the temporary folder takes no file; empty when he cancels.
std::string DrawingPath(const PartServices& services) {
  std::string path = platform::MakeTempFile(platform::TempFolder(), kPrefix, kExtension);
  if (!path.empty()) return path;
  return platform::AskSaveFile({.owner = MainWindow(services.driver),
                                .initialPath = std::string(kPrefix) + "." + kExtension,
                                .defaultExtension = kExtension,
                                .filter = kFilter,
                                .title = ""})
      .value_or("");
}

bool WriteGlobals(VXProtocol& protocol) {
  for (const GlobalRow& row : kGlobals) {
    if (!protocol.PutGlobalData(row.item, row.value)) return false;
  }
  return true;
}

}  // namespace

int CallFem(const PartServices& services) {
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return 0;
  const std::string drawing = DrawingPath(services);
  if (drawing.empty()) return 0;
  if (services.driver.CreateDxfFile(drawing.c_str()) == 0) {
    platform::RemoveFile(drawing);
    return 0;
  }
  if (!WriteGlobals(protocol) ||
      !protocol.PutKeyWord(section::kMain, keyword::kDataFile, kDataFile)) {
    platform::RemoveFile(drawing);
    return 0;
  }
  protocol.PutCadx(keyword::kRecalcAgain, "1");
  protocol.PutCadx(kDxfFileKeyword, drawing);
  services.host.ShowCalculation(protocol.GetProtocolID());
  return 1;
}

}  // namespace quillmar
