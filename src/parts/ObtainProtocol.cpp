#include "parts/ObtainProtocol.h"

#include "parts/CadListReaders.h"
#include "parts/PhysicalProperties.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

bool ObtainProtocol(const PartServices& services, const std::string& partName) {
  std::string reference;
  if (!ReadCadReference(services.driver, partName, reference)) return false;
  VXProtocol protocol(services.protocols);
  // A protocol that a calculation window holds counts as opened, but this object cannot work
  // with it.
  if (protocol.OpenFromReference(reference, false, Markers::Standard) == 0 || !protocol.IsReady()) {
    return false;
  }
  protocol.SetDrawn(!services.session.groupManager);
  protocol.SetChanged(0);
  std::string modelId;
  protocol.GetModelID(modelId);
  protocol.PutGlobalData(global::kOldModelId, modelId);
  PartStateUpdate(services, protocol);
  return true;
}

}  // namespace quillmar
