#include "commands/Commands.h"

#include "commands/CadQuestions.h"
#include "commands/ProtocolCreation.h"
#include "parts/PartFactory.h"
#include "parts/PhysicalProperties.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr std::string_view kConfigurationPrefix = "CfgData|";
constexpr std::size_t kDatabasesSize = 1001;

constexpr const char* kCannotDescribe = "Cannot get extended information";

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

// Reports and gives the failure result.
bool Fail(const PartServices& services, const char* message, const SourceStamp& source) {
  services.errors.ReportError(message, source);
  return false;
}

std::optional<ActiveAssembly> ObtainActiveAssembly(const CommandContext& context) {
  const CadDriverTable& driver = context.services.driver;
  if (auto assembly = AskActiveAssembly(driver)) return assembly;
  // Asked again in any case: an add-in may answer 0 for an assembly that it did take.
  ConnectNewAssemblyProtocol(context);
  return AskActiveAssembly(driver);
}

void TurnUserPartIntoAssembly(VXProtocol& protocol) {
  std::string dataFile;
  protocol.GetKeyWord(section::kMain, keyword::kDataFile, dataFile);
  if (platform::UpperCase(dataFile).find("USERPART") == std::string::npos) return;
  protocol.PutKeyWord(section::kMain, keyword::kDataFile, kAssemblyDataFile);
  protocol.SetTypeOfPart(kAssemblyType);
}

}  // namespace

bool RegisterCadSideProtocol(const PartServices& services, VXProtocol& protocol,
                             const std::string& identifier) {
  protocol.PutKeyWord(section::kObject, keyword::kProtId, identifier);
  FallBackToUserPart(services, protocol);
  protocol.SetDrawn(!services.session.groupManager);
  protocol.SetChanged(0);
  const auto part = CreatePartForProtocol(services, protocol);
  if (!part || !part->ReadBackFromCad()) return Fail(services, kCannotDescribe, QM_HERE);
  WriteAssemblyPath(services, protocol);
  PartStateUpdate(services, protocol);
  ReadPhysicalProperties(services, protocol);
  return true;
}

void WriteAssemblyPath(const PartServices& services, VXProtocol& protocol) {
  const std::string path = AssemblyPath(services.driver);
  if (!path.empty()) protocol.PutCadx(keyword::kAsmPath, path);
}

bool ConnectNewAssemblyProtocol(const CommandContext& context) {
  const PartServices& services = context.services;
  VXProtocol protocol(services.protocols);
  if (!FillNewProtocol(protocol, NewProtocol::ConnectedAssembly)) return false;
  const auto name = AssemblyName(services.driver);
  if (name && !WriteNameItems(protocol, *name)) return false;
  const std::string id = protocol.GetProtocolID();
  context.state.currentAssembly = id;
  std::string reference;
  protocol.MakeReference(reference, Markers::Standard);
  // The text between them lists parameters; a new assembly has none.
  if (services.driver.InsertAssembly(id.c_str(), "", reference.c_str()) == 0) {
    return Fail(services, "Cannot connect assembly protocol", QM_HERE);
  }
  return true;
}

bool DescribeActiveAssembly(const CommandContext& context, VXProtocol& protocol) {
  const PartServices& services = context.services;
  if (services.session.groupManager) return false;
  const auto assembly = ObtainActiveAssembly(context);
  if (!assembly) return false;
  if (protocol.OpenFromReference(assembly->reference, true, Markers::Standard) == 0) return false;
  context.state.currentAssembly = protocol.GetProtocolID();
  TurnUserPartIntoAssembly(protocol);
  const auto part = CreatePartForProtocol(services, protocol);
  protocol.SetDrawn(true);
  protocol.SetChanged(0);
  protocol.PutKeyWord(section::kObject, keyword::kCadDescriptionWritten, assembly->description);
  protocol.PutKeyWord(section::kObject, keyword::kProtId, assembly->identifier);
  if (!part || !part->ReadBackFromCad()) return Fail(services, kCannotDescribe, QM_HERE);
  ReadPhysicalProperties(services, protocol);
  ReadFeatureStates(services, protocol);
  return true;
}

}  // namespace quillmar
