#include "commands/PartRegistration.h"

#include "parts/PartFactory.h"
#include "parts/PhysicalProperties.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr std::string_view kConfigurationPrefix = "CfgData|";
constexpr const char* kUserPartDataFile = "KeelData|userpart";
constexpr std::size_t kDatabasesSize = 1001;
constexpr std::size_t kAssemblyPathSize = 1024;

// File of a configuration calculation of that name.
std::string ConfigurationFile(const PartServices& services, const std::string& configuration) {
  std::string folder = platform::ReadProfileText(services.paths.GetSuiteFolder() + "\\hexaplan.ini",
                                                 "CfgData", "Databases", "", kDatabasesSize);
  if (!folder.ends_with('\\')) folder += '\\';
  return folder + "CBF\\" + configuration + ".cbf";
}

// A configuration whose file is not installed can be shown as a user part only.
void FallBackToUserPart(const PartServices& services, VXProtocol& protocol) {
  std::string dataFile;
  if (!protocol.GetDataFile(dataFile) || !dataFile.starts_with(kConfigurationPrefix)) return;
  const std::string configuration = dataFile.substr(kConfigurationPrefix.size());
  if (platform::FileExists(ConfigurationFile(services, configuration))) return;
  protocol.PutKeyWord(section::kMain, keyword::kDataFile, kUserPartDataFile);
  protocol.PutKeyWord(section::kFiles, keyword::kDataFile, kUserPartDataFile);
}

bool DescribeToCad(const PartServices& services, VXProtocol& protocol) {
  const auto part = CreatePartForProtocol(services, protocol);
  return part != nullptr && part->ReadBackFromCad();
}

void WriteAssemblyPath(const PartServices& services, VXProtocol& protocol) {
  char path[kAssemblyPathSize] = "";
  if (!services.driver.GetAssemblyPath || services.driver.GetAssemblyPath(path) != 1) return;
  path[kAssemblyPathSize - 1] = '\0';
  if (path[0] != '\0') protocol.PutCadx(keyword::kAsmPath, path);
}

}  // namespace

bool RegisterCadSideProtocol(const PartServices& services, VXProtocol& protocol,
                             const std::string& identifier) {
  protocol.PutKeyWord(section::kObject, keyword::kProtId, identifier);
  FallBackToUserPart(services, protocol);
  protocol.SetDrawn(!services.session.groupManager);
  protocol.SetChanged(0);
  if (!DescribeToCad(services, protocol)) {
    services.errors.ReportError("Cannot get extended information", QM_HERE);
    return false;
  }
  WriteAssemblyPath(services, protocol);
  PartStateUpdate(services, protocol);
  ReadPhysicalProperties(services, protocol);
  return true;
}

}  // namespace quillmar
