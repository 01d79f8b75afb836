#include "commands/Optimization.h"

#include "bom/BomData.h"
#include "commands/GroupScans.h"
#include "commands/SelectionStep.h"
#include "parts/PhysicalProperties.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kOptimizePart = "1";

bool IsGroup(VXProtocol& protocol) {
  int answer = 0;
  return protocol.IsSuperProtocol(answer) && answer != 0;
}

void OptimizeGroup(const CommandContext& context, const std::string& protocolId) {
  VXProtocol group(context.services.protocols);
  if (!MakeGroupOf(context, protocolId, group)) return;
  context.services.host.ShowCalculation(group.GetProtocolID());
}

// The optimizer compares with the state that the CAD shows now.
void OptimizeCalculation(const PartServices& services, WorkingCopy& selected) {
  VXProtocol& protocol = selected.Protocol();
  MarkForOptimizer(protocol, kOptimizePart);
  RefreshBomData(protocol);
  ReadPhysicalProperties(services, protocol);
  services.host.ShowCalculation(selected.Keep());
}

}  // namespace

void MarkForOptimizer(VXProtocol& protocol, TextRef how) {
  protocol.PutCadx(keyword::kHasIdentity, "1");
  protocol.PutCadx(keyword::kToUpdate, "1");
  protocol.PutCadx(keyword::kRecalcAgain, "0");
  protocol.PutCadx(keyword::kToOptimize, how);
}

int CallOptim(const CommandContext& context) {
  WorkingCopy selected(context.services);
  if (!OpenSelected(context.services, selected)) return 0;
  if (IsGroup(selected.Protocol())) {
    OptimizeGroup(context, selected.Keep());
  } else if (IsForCalculation(selected)) {
    OptimizeCalculation(context.services, selected);
  }
  // A part that nothing can be optimized in is no failure.
  return 1;
}

}  // namespace quillmar
