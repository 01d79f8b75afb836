#include "commands/CalculationStarts.h"

#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kCalculationPrefix = "KEELDATA|";
constexpr const char* kStartLanguage = "CZ";

}  // namespace

void StartCalculation(const PartServices& services, const std::string& dataFile,
                      const std::string& standard) {
  const std::string name = kCalculationPrefix + platform::UpperCase(dataFile);
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return;
  protocol.PutGlobalData(global::kStandard, standard);
  protocol.PutGlobalData(global::kFirstRun, "1");
  protocol.PutCadx(keyword::kRecalcNew, "1");
  protocol.PutGlobalData(global::kLanguage, kStartLanguage);
  protocol.PutKeyWord(section::kMain, keyword::kDataFile, name);
  services.host.ShowCalculation(protocol.GetProtocolID());
}

}  // namespace quillmar
