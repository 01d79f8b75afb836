#include "commands/CalculationStarts.h"

#include "base/RegistryKey.h"
#include "commands/Optimization.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kCalculationPrefix = "KEELDATA|";
constexpr const char* kStartLanguage = "CZ";
constexpr const char* kRecalculate = "1";

constexpr const char* kBoltedConnectionFile = "KEELDATA|THRJOIN";
constexpr const char* kRecalculateBolted = "5";
constexpr const char* kDefaultStandard = "ANS";

constexpr const char* kOptimizeGroupMember = "4";

constexpr const char* kBlanks = " \t\n\v\f\r";

std::string WithoutBlanksAround(const std::string& text) {
  const auto begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// The first that can be read counts, also when it holds nothing.
std::string LastUsedStandard(const OptionsStore& options) {
  const struct {
    std::string key;
    const char* value;
  } places[] = {
      {GetModuleRegistryKey(true) + "VxcVTL\\Calcs\\BOLTCON", "Standard"},
      {options.Key() + "\\OptKC", "LastSelStdAsStr"},
      {GetModuleRegistryKey(true) + "Fendrake", "LastStandard"},
  };
  std::string standard;
  for (const auto& place : places) {
    if (RegistryKey::ReadStringUserThenMachine(place.key, place.value, standard)) break;
  }
  standard = WithoutBlanksAround(standard);
  return standard.empty() ? kDefaultStandard : standard;
}

}  // namespace

void StartCalculation(const PartServices& services, const std::string& dataFile,
                      const std::string& standard) {
  const std::string name = kCalculationPrefix + platform::UpperCase(dataFile);
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return;
  protocol.PutGlobalData(global::kStandard, standard);
  protocol.PutGlobalData(global::kFirstRun, "1");
  protocol.PutCadx(keyword::kRecalcNew, kRecalculate);
  protocol.PutGlobalData(global::kLanguage, kStartLanguage);
  protocol.PutKeyWord(section::kMain, keyword::kDataFile, name);
  services.host.ShowCalculation(protocol.GetProtocolID());
}

bool StartBoltedConnection(const PartServices& services) {
  const std::string standard = LastUsedStandard(services.options);
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return false;
  protocol.PutGlobalData(global::kStandard, standard);
  protocol.PutCadx(keyword::kRecalcNew, kRecalculateBolted);
  protocol.PutGlobalData(global::kLanguage, kStartLanguage);
  protocol.PutKeyWord(section::kMain, keyword::kDataFile, kBoltedConnectionFile);
  services.host.ShowCalculation(protocol.GetProtocolID());
  return true;
}

bool StartGroupOptimization(const PartServices& services, const std::string& protocolId) {
  VXProtocol protocol(services.protocols, protocolId);
  if (!protocol.IsReady()) return false;
  MarkForOptimizer(protocol, kOptimizeGroupMember);
  services.host.ShowCalculation(protocolId);
  return true;
}

int EditBoltedConnection(const PartServices& services, const std::string& reference, int first,
                         int second) {
  VXProtocol protocol(services.protocols);
  if (protocol.OpenFromReference(reference, true, Markers::Standard) == 0) return 0;
  const std::string protocolId = protocol.GetProtocolID();
  protocol.Close();
  return services.bolted.EditBoltedConnection2(protocolId, first, second);
}

}  // namespace quillmar
