#include "parts/VXParamPart.h"

#include <cstring>
#include <memory>
#include <new>

#include "base/Texts.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr std::string_view kUserPart = "userpart";
// Characters of each buffer for configurations, and how much more a second try has.
constexpr int kConfigurationSize = 65535;
constexpr int kSecondTry = 4;

bool IsUserPart(const std::string& dataFile) {
  if (dataFile.size() < kUserPart.size()) return false;
  const std::string_view name = dataFile;
  return platform::EqualsNoCase(name.substr(0, kUserPart.size()), kUserPart) ||
         platform::EqualsNoCase(name.substr(name.size() - kUserPart.size()), kUserPart);
}

struct Configurations {
  std::string active;
  std::string list;  // joined by commas
};

bool ReadConfigurations(const CadDriverTable& driver, const std::string& protocolId, int size,
                        Configurations& configurations) {
  const auto room = static_cast<std::size_t>(size);
  const std::unique_ptr<char[]> buffers(new (std::nothrow) char[2 * (room + 1)]);
  if (buffers == nullptr) return false;
  char* active = buffers.get();
  char* list = active + room + 1;
  active[0] = '\0';
  list[0] = '\0';
  if (driver.GetConfiguration(protocolId.c_str(), active, size, list) == 0) return false;
  configurations.active.assign(active, ::strnlen(active, room));
  configurations.list.assign(list, ::strnlen(list, room));
  return true;
}

}  // namespace

bool VXParamPart::GetModelFilePath(std::string& path) {
  std::string modelId;
  protocol.GetModelID(modelId);
  const bool isPath = modelId.find('\\') != std::string::npos && platform::FileExists(modelId);
  path = isPath ? modelId : LibraryModelPath(modelId);
  return true;
}

bool VXParamPart::CreatePartFile() { return true; }

bool VXParamPart::WantsDescription() {
  std::string dataFile;
  protocol.GetDataFileName(dataFile);
  return !IsUserPart(dataFile);
}

bool VXParamPart::InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  std::string modelPath;
  GetModelFilePath(modelPath);
  ApplyGenerationRules(parameters, modelPath);
  if (!MakeFileName(false, true)) {
    return Fail("Cannot insert parameter part - can't create filename", QM_HERE);
  }
  return services.driver.InsertParamPart(protocol.GetProtocolID().c_str(), modelPath.c_str(),
                                         parameters.c_str(), connection.c_str(), smartPart,
                                         filePath.c_str(), caption.c_str(), pairs.Get(),
                                         pairs.Count()) != 0 ||
         Fail("Cannot insert parameter part", QM_HERE);
}

// A shared part may be generated without parameters, and may be the library's file itself.
void VXParamPart::ApplyGenerationRules(std::string& parameters, const std::string& modelPath) {
  if (IsLocal()) return;
  std::string rule;
  protocol.GetGlobalData(global::kGenPartType, rule);
  if (rule == "0") parameters.clear();
  protocol.GetGlobalData(global::kGenCopyFile, rule);
  if (rule == "0") filePath = modelPath;
}

bool VXParamPart::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  std::string modelPath;
  GetModelFilePath(modelPath);
  ApplyGenerationRules(parameters, modelPath);
  const bool modelChanged = HasOtherModel();
  if (SwitchConfiguration(connection)) return true;
  return ChangeByState(connection, QM_HERE, [&] {
    return ChangeFully(parameters, modelPath, WithFreshIdentity(connection), pairs, modelChanged);
  });
}

bool VXParamPart::SwitchConfiguration(const std::string& connection) {
  std::string active;
  protocol.GetKeyWord(section::kConfigurations, keyword::kActive, active);
  if (active.empty() || !services.driver.SetActiveConfiguration) return false;
  services.driver.SetActiveConfiguration(protocol.GetProtocolID().c_str(), active.c_str(),
                                         connection.c_str());
  return true;
}

bool VXParamPart::ChangeFully(const std::string& parameters, const std::string& modelPath,
                              const std::string& connection, const ExtDataPairs& pairs,
                              bool modelChanged) {
  if (!MakeFileName(true, modelChanged)) {
    return Fail("Cannot update parameter part - can't create filename", QM_HERE);
  }
  if (services.driver.ChangeParamPart(protocol.GetProtocolID().c_str(), modelPath.c_str(),
                                      parameters.c_str(), connection.c_str(), smartPart,
                                      filePath.c_str(), caption.c_str(), pairs.Get(), pairs.Count(),
                                      modelChanged ? 1 : 0) == 0) {
    return Fail("Cannot update parameter part", QM_HERE);
  }
  return SendFeatureStates(QM_HERE);
}

bool VXParamPart::ReadBackFromCad() {
  StoreModelId();
  if (!ReadParametersBack(CadList::Parameters)) return false;
  ReadFeatureStatesBack();
  return ReadConfigurationsBack();
}

bool VXParamPart::ReadConfigurationsBack() {
  protocol.EraseSection(section::kConfigurations);
  if (!services.driver.GetConfiguration) return true;
  Configurations configurations;
  const std::string& id = protocol.GetProtocolID();
  if (!ReadConfigurations(services.driver, id, kConfigurationSize, configurations) &&
      !ReadConfigurations(services.driver, id, kSecondTry * kConfigurationSize, configurations)) {
    return Fail("Cannot get list of parameters from CAD", QM_HERE);
  }
  protocol.PutKeyWord(section::kConfigurations, keyword::kActive, configurations.active);
  int number = 0;
  for (const std::string& name : SplitKeepingEmpty(configurations.list, ',')) {
    protocol.PutKeyWord(section::kConfigurations, "Config" + std::to_string(++number), name);
  }
  return true;
}

}  // namespace quillmar
