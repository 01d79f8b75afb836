#include "commands/ExtendedDataRefresh.h"

#include <algorithm>

#include "commands/CadQuestions.h"
#include "commands/WorkingCopy.h"
#include "parts/PartFactory.h"

namespace quillmar {
namespace {

// Parametric parts, model parts, shafts and assemblies carry extended data.
constexpr int kTypesWithExtendedData[] = {2, 3, 9, 10};

bool CarriesExtendedData(VXProtocol& protocol) {
  int type = 0;
  return protocol.GetTypeOfPart(type) &&
         std::find(std::begin(kTypesWithExtendedData), std::end(kTypesWithExtendedData), type) !=
             std::end(kTypesWithExtendedData);
}

// The host writes its part of the data into the stored protocol, which is closed meanwhile.
bool UpdateByHost(const PartServices& services, VXProtocol& protocol) {
  const std::string id = protocol.GetProtocolID();
  protocol.Close();
  services.host.CallIntIfOffered(QM_HOST_NAME_UPDATE_EXT_DATA, QM_HOST_UPDATE_EXT_DATA,
                                 {id, static_cast<int>(MainWindow(services.driver))});
  return protocol.Open(id);
}

// One that a calculation window holds counts as opened, but stays with its window. What carries no
// extended data leaves the store as it was; of the others the CAD's reference text counts.
void RefreshPart(const PartServices& services, const std::string& reference) {
  WorkingCopy copy(services);
  if (!copy.Open(reference, false) || !copy.Protocol().IsReady()) return;
  VXProtocol& protocol = copy.Protocol();
  if (!CarriesExtendedData(protocol)) return;
  const std::string id = protocol.GetProtocolID();
  if (UpdateByHost(services, protocol)) {
    if (const auto part = CreatePartForProtocol(services, protocol)) part->Update();
    copy.Keep();
  }
  // The host may have shown it meanwhile.
  if (!services.session.groupManager &&
      VXProtocol::ProtocolExists(services.protocols, id) != QM_PROTOCOL_HELD_BY_CALCULATION) {
    VXProtocol::EraseById(services.protocols, id);
  }
}

}  // namespace

int UpdateExtendedData(const PartServices& services) {
  const auto references = SplitAllParts(services.driver);
  if (!references) return 0;
  for (const std::string& reference : *references) RefreshPart(services, reference);
  return 1;
}

}  // namespace quillmar
