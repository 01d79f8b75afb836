#include "commands/ExtendedDataRefresh.h"

#include <algorithm>

#include "base/Texts.h"
#include "parts/CadListReaders.h"
#include "parts/PartFactory.h"

namespace quillmar {
namespace {

constexpr const char* kNextReference = "<@NEXT_PROT>";

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

void RefreshPart(const PartServices& services, const std::string& reference) {
  std::string id;
  const bool wasStored = VXProtocol::ExtractProtocolID(reference, id, Markers::Standard) &&
                         VXProtocol::ProtocolExists(services.protocols, id) != QM_PROTOCOL_MISSING;
  VXProtocol protocol(services.protocols);
  // One that a calculation window holds counts as opened, but stays with its window.
  if (protocol.OpenFromReference(reference, false, Markers::Standard) == 0 || !protocol.IsReady()) {
    return;
  }
  id = protocol.GetProtocolID();
  const bool carries = CarriesExtendedData(protocol);
  if (carries) {
    if (!UpdateByHost(services, protocol)) return;
    if (const auto part = CreatePartForProtocol(services, protocol)) part->Update();
  }
  protocol.Close();
  // The store keeps what it had of other kinds; of these the CAD's reference text counts.
  if (!services.session.groupManager && (carries || !wasStored)) {
    VXProtocol::EraseById(services.protocols, id);
  }
}

}  // namespace

int UpdateExtendedData(const PartServices& services) {
  std::string list;
  if (!ReadAllReferences(services.driver, list)) return 0;
  for (const std::string& reference : SplitList(list, kNextReference)) {
    RefreshPart(services, reference);
  }
  return 1;
}

}  // namespace quillmar
