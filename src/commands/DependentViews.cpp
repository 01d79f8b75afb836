#include "commands/DependentViews.h"

#include <vector>

#include "parts/ObtainProtocol.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

// Where links stand in the protocol itself the keyword tells, else the link library; the name of
// the link follows an "@".
std::string SourceOfView(VXProtocol& protocol) {
  std::string link;
  if (!protocol.GetKeyWord(section::kLinksFrom, keyword::kNewView, link) || link.empty()) {
    std::vector<std::string> parents;
    protocol.GetLinkFromParentList2(keyword::kNewView, parents);
    if (!parents.empty()) link = parents.front();
  }
  return link.substr(0, link.find('@'));
}

bool ObtainSourceOfView(const PartServices& services, VXProtocol& protocol) {
  const std::string source = SourceOfView(protocol);
  if (source.empty()) return false;
  return VXProtocol::ProtocolExists(services.protocols, source) ==
             QM_PROTOCOL_HELD_BY_CALCULATION ||
         ObtainProtocol(services, source);
}

bool PrepareView(const PartServices& services, VXProtocol& protocol) {
  return protocol.GetNewView() == 0 || ObtainSourceOfView(services, protocol);
}

void DetachView(VXProtocol& protocol) {
  protocol.EraseCadx(keyword::kNewView);
  protocol.EraseKeyWord(section::kLinksFrom, keyword::kNewView);
}

}  // namespace quillmar
