#include "commands/DrawingCommands.h"

#include <vector>

#include "base/Texts.h"
#include "parts/HostFiles.h"
#include "parts/VX2dPart.h"
#include "platform/Files.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

// What the copy must not take over from the protocol that it was made from.
constexpr const char* kLinkSections[] = {section::kLinkFrom, section::kLinkTo, section::kLinksFrom,
                                         section::kLinksTo};

constexpr const char* kFormatDataFile = "Symbols|xformats";
constexpr const char* kFormatLanguage = "NO";
constexpr int kFormatType = 12;
constexpr const char* kNoUnit = "ND";

constexpr const char* kPictureExtension = "WMF";

// The copy stands for an object of its own, also where the source names the one it was made for.
bool CopyUnderUniqueId(VXProtocol& copy, VXProtocol& source) {
  std::string copyId;
  // Opening makes it.
  if (!VXProtocol::CreateUniquePID(copy.Context(), copyId) || !copy.Open(copyId)) return false;
  int major = 0;
  int minor = 0;
  if (source.GetVersion(major, minor)) copy.SetVersion(major, minor);
  std::vector<std::string_view> texts;
  if (!source.GetBuffer(texts) || !copy.PutBuffer(texts)) return false;
  std::string named;
  return !copy.GetKeyWord(section::kObject, keyword::kProtId, named) ||
         copy.PutKeyWord(section::kObject, keyword::kProtId, copyId);
}

bool DrawCopy(const PartServices& services, VXProtocol& copy, Drawing& drawing) {
  VX2dPart part(services, copy);
  if (!part.CreatePartFile()) return false;
  drawing.file = part.DrawingFile();
  drawing.metric = part.Metric();
  drawing.x = part.InsertX();
  drawing.y = part.InsertY();
  drawing.level = part.Level();
  return true;
}

}  // namespace

bool Create2dPart(const PartServices& services, const std::string& protocolId, bool removeInfo,
                  Drawing& drawing) {
  VXProtocol source(services.protocols);
  VXProtocol copy(services.protocols);
  if (!source.AttachExisting(protocolId) || !CopyUnderUniqueId(copy, source) ||
      !DrawCopy(services, copy, drawing)) {
    if (copy.IsReady()) copy.Erase();
    return false;
  }
  drawing.protocolId = copy.GetProtocolID();
  if (!copy.MakeReference(drawing.connection, Markers::Standard)) {
    services.errors.ReportError("Cannot prepare protocol.", QM_HERE);
    copy.Erase();
    DiscardDrawing(services, drawing);
    return false;
  }
  for (const char* section : kLinkSections) copy.EraseSection(section);
  if (removeInfo) copy.PutGlobalData(global::kReallyRemoveInfo, "1");
  drawing.pairs = VX2dPart(services, copy).BuildExtendedData();
  return true;
}

void DiscardDrawing(const PartServices& services, const Drawing& drawing) {
  if (!drawing.file.empty()) platform::RemoveFile(drawing.file);
  VXProtocol copy(services.protocols);
  if (copy.AttachExisting(drawing.protocolId)) copy.Erase();
}

int ShowFormat(const PartServices& services, const std::string& standard, double scale) {
  VXProtocol format(services.protocols);
  if (format.CreateNew() == 0) return 0;
  format.PutGlobalData(global::kStandard, standard);
  format.PutGlobalData(global::kPreferredStandard, standard);
  format.PutGlobalData(global::kLanguage, kFormatLanguage);
  format.PutKeyWord(section::kMain, keyword::kDataFile, kFormatDataFile);
  format.SetTypeOfPart(kFormatType);
  format.PutCadx(keyword::kRecalcAgain, "1");
  format.PutDataParam(parameter::kScale, FormatNumber(scale), kNoUnit);
  return services.host.ShowCalculation(format.GetProtocolID());
}

std::string MakePicture(const PartServices& services, const std::string& protocolId) {
  std::string path;
  {
    VXProtocol protocol(services.protocols);
    if (!protocol.AttachExisting(protocolId)) return {};
    path = MakeHostFile(kPictureExtension);
    if (path.empty() || !protocol.PutKeyWord(section::kFiles, keyword::kOutput, path)) {
      if (!path.empty()) platform::RemoveFile(path);
      return {};
    }
  }
  if (services.host.WriteFile(protocolId, services.driver.fileType2d)) return path;
  platform::RemoveFile(path);
  return {};
}

bool IsPartMetric(const PartServices& services, const std::string& protocolId) {
  VXProtocol protocol(services.protocols);
  return protocol.AttachExisting(protocolId) && IsMetric(protocol);
}

}  // namespace quillmar
