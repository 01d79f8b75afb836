#include "bom/BomData.h"

#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

void RefreshBomData(VXProtocol& protocol) {
  std::string mass;
  std::string unit;
  protocol.GetDataParam("mass", mass, unit);
  protocol.PutGlobalData(global::kBomMassValue, mass);
  protocol.PutGlobalData(global::kBomMassUnit, unit);
}

}  // namespace quillmar
