#include "commands/SelectionStep.h"

#include "commands/CadQuestions.h"
#include "commands/Commands.h"
#include "commands/ProtocolKinds.h"
#include "conversion/ProtocolConverter.h"

namespace quillmar {

bool OpenSelected(const PartServices& services, WorkingCopy& copy) {
  const auto reference = SelectedReference(services.driver);
  if (!reference || !copy.Open(*reference, true)) return false;
  VXProtocol& protocol = copy.Protocol();
  const std::string id = protocol.GetProtocolID();
  // 2D objects, and whatever an older calculation left in the CAD, bear the older layout.
  ConvertProtocol(services.session, services.converter.get(), protocol, 0);
  if (!RegisterCadSideProtocol(services, protocol, id)) return false;
  // The CAD calls of the registration let others work: somebody may have closed the protocol.
  if (VXProtocol::ProtocolExists(services.protocols, id) != QM_PROTOCOL_CLOSED) return true;
  return protocol.Open(id);
}

bool IsForCalculation(WorkingCopy& copy) {
  if (KindOf(copy.Protocol()) == ProtocolKind::Calculation) return true;
  copy.Discard();
  return false;
}

}  // namespace quillmar
