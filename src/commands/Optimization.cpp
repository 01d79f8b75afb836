#include "commands/Optimization.h"

#include "bom/BomData.h"
#include "commands/GroupScans.h"
#include "commands/SelectionStep.h"
#include "parts/PhysicalProperties.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

struct Mark {
  const char* keyword;
  const char* value;
};

constexpr Mark kOptimizerMarks[] = {
    {keyword::kHasIdentity, "1"},
    {keyword::kToUpdate, "1"},
    {keyword::kRecalcAgain, "0"},
    {keyword::kToOptimize, "1"},
};

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
  for (const Mark& mark : kOptimizerMarks) protocol.PutCadx(mark.keyword, mark.value);
  RefreshBomData(protocol);
  ReadPhysicalProperties(services, protocol);
  services.host.ShowCalculation(selected.Keep());
}

}  // namespace

int CallOptim(const CommandContext& context) {
  WorkingCopy selected(context.services);
  if (!OpenSelected(context.services, selected)) return 0;
  if (IsGroup(selected.Protocol())) {
    OptimizeGroup(context, selected.Keep());
    return 1;
  }
  if (!IsForCalculation(selected)) return 0;
  OptimizeCalculation(context.services, selected);
  return 1;
}

}  // namespace quillmar
