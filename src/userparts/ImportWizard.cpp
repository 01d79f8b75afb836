#include "userparts/ImportWizard.h"

#include "protocol/ProtocolVocabulary.h"
#include "quillmar/UserParts.h"
#include "userparts/Companions.h"

namespace quillmar {
namespace {

constexpr int kFiles = 1;

}  // namespace

int ImportWizard(const PartServices& services, int type, int units, const std::string& fileName) {
  std::string id;
  {
    VXProtocol protocol(services.protocols);
    if (protocol.CreateNew() == 0) return 1;
    protocol.PutKeyWordInt(section::kData, "Type", type);
    protocol.PutKeyWordInt(section::kData, "Units", units);
    protocol.PutKeyWordInt(section::kData, "Files", kFiles);
    protocol.PutKeyWord(section::kFiles, "Item0", fileName);
    id = protocol.GetProtocolID();
  }
  StartWithParameter(services.host.CompanionFolder(), QM_IMPORT_WIZARD, "/C " + id);
  return 1;
}

}  // namespace quillmar
