#include "commands/LinkRefresh.h"

#include "commands/CadQuestions.h"
#include "commands/GroupScans.h"
#include "commands/ProtocolCreation.h"
#include "commands/ProtocolKinds.h"
#include "commands/WorkingCopy.h"
#include "conversion/ProtocolConverter.h"
#include "parts/PartFactory.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

bool IsLinked(VXProtocol& protocol) {
  return protocol.GetLinksFromCount(false) > 0 || protocol.GetLinksToCount() > 0;
}

// The calculations of the group work with the protocols of linked parts.
void RefreshPart(const PartServices& services, const std::string& reference) {
  WorkingCopy copy(services);
  if (!copy.Open(reference, false) || !copy.Protocol().IsReady()) return;
  VXProtocol& protocol = copy.Protocol();
  ConvertProtocol(services.session, services.converter.get(), protocol, 0);
  if (!IsLinked(protocol)) return;
  protocol.PutCadx(keyword::kFromCad, "1");
  if (const auto part = CreatePartForProtocol(services, protocol)) part->Update();
  copy.Keep();
}

}  // namespace

int RefreshAllLinks(const CommandContext& context) {
  const PartServices& services = context.services;
  VXProtocol group(services.protocols);
  if (group.CreateNew() == 0) return 0;
  const auto references = SplitAllParts(services.driver);
  if (!references) {
    group.Erase();
    return 0;
  }
  for (const std::string& reference : *references) RefreshPart(services, reference);
  PutAssemblyIntoGroup(context, group);
  if (!InitializeCalculation(group, kGroupDataFile)) {
    group.Erase();
    return 0;
  }
  services.host.ShowCalculation(group.GetProtocolID());
  return 1;
}

}  // namespace quillmar
