#include "commands/GroupScans.h"

#include <utility>

#include "commands/Commands.h"
#include "commands/ProtocolCreation.h"
#include "commands/ProtocolKinds.h"
#include "commands/SelectionStep.h"
#include "commands/TreeScan.h"
#include "parts/CadListReaders.h"
#include "parts/PhysicalProperties.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kBomDataFile = "XBom";

using Identifiers = std::vector<std::string>;

void MarkAsScanned(const PartServices& services, VXProtocol& assembly) {
  assembly.PutGlobalData(global::kReallyScan, "1");
  ReadPhysicalProperties(services, assembly);
  WriteAssemblyPath(services, assembly);
}

// Opens and describes the active assembly; its identifier, empty when there is none.
std::string PrepareAssembly(const CommandContext& context) {
  VXProtocol assembly(context.services.protocols);
  if (!DescribeActiveAssembly(context, assembly)) return {};
  MarkAsScanned(context.services, assembly);
  return assembly.GetProtocolID();
}

Identifiers MembersOf(const PartServices& services, const std::string& protocolId) {
  VXProtocol protocol(services.protocols, protocolId);
  int isGroup = 0;
  Identifiers members;
  if (protocol.IsReady() && protocol.IsSuperProtocol(isGroup) && isGroup != 0) {
    protocol.GetProtocolList(members);
  }
  return members;
}

Identifiers ScanTreeOf(const PartServices& services, const std::string& protocolId) {
  const auto window =
      platform::ProgressWindow::Create(MainWindow(services.driver), services.options.Title());
  TreeScan scan(services, ChosenScanDepths(services.options), window.get());
  if (!scan.Scan(protocolId)) return {};
  for (const std::string& member : MembersOf(services, protocolId)) scan.Scan(member);
  return scan.Found();
}

// What calculations call "Bom7" this module writes as "BOM7"; old ones keep it as a keyword.
bool IsCounted(const PartServices& services, const std::string& protocolId) {
  VXProtocol protocol(services.protocols, protocolId);
  if (!protocol.IsReady()) return false;
  std::string count;
  return (!protocol.GetGlobalData(global::kBomCountOfCalculations, count) &&
          !protocol.GetGlobalData(global::kBomCount, count) &&
          !protocol.GetKeyWord(section::kGlobals, global::kBomCountOfCalculations, count)) ||
         count != "0";
}

Identifiers CountedOnes(const PartServices& services, const Identifiers& protocols) {
  Identifiers counted;
  for (const std::string& id : protocols) {
    if (IsCounted(services, id)) counted.push_back(id);
  }
  return counted;
}

bool WriteGroup(VXProtocol& group, const char* dataFile, const Identifiers& members) {
  if (members.empty() || group.CreateNew() == 0) return false;
  bool written = InitializeCalculation(group, dataFile);
  for (std::size_t i = 0; written && i < members.size(); ++i) {
    written = group.PutProtocol(members[i], members[i]);
  }
  if (!written) group.Erase();
  return written;
}

int Show(const CommandContext& context, VXProtocol& group) {
  context.services.host.ShowCalculation(group.GetProtocolID());
  return 1;
}

bool IsInCad(const PartServices& services, const std::string& protocolId) {
  std::string reference;
  return ReadCadReference(services.driver, protocolId, reference) && !reference.empty();
}

int ShowGroupOf(const CommandContext& context, const std::string& protocolId) {
  VXProtocol group(context.services.protocols);
  return MakeGroupOf(context, protocolId, group) ? Show(context, group) : 0;
}

}  // namespace

int ScanAssembly(const CommandContext& context) {
  const std::string assembly = PrepareAssembly(context);
  return assembly.empty() ? 0 : ShowGroupOf(context, assembly);
}

int ScanSelected(const CommandContext& context) {
  WorkingCopy selected(context.services);
  if (!OpenSelected(context.services, selected) || !IsForCalculation(selected)) return 0;
  // The scan opens the protocol itself.
  const std::string id = selected.Keep();
  const int shown = ShowGroupOf(context, id);
  if (shown == 0 && !context.services.session.groupManager) {
    VXProtocol::EraseById(context.services.protocols, id);
  }
  return shown;
}

int ScanBillOfMaterials(const CommandContext& context) {
  const PartServices& services = context.services;
  const std::string assembly = PrepareAssembly(context);
  if (assembly.empty()) return 0;
  VXProtocol bom(services.protocols);
  const Identifiers counted = CountedOnes(services, ScanTreeOf(services, assembly));
  return WriteGroup(bom, kBomDataFile, counted) ? Show(context, bom) : 0;
}

bool MakeGroupOf(const CommandContext& context, const std::string& protocolId, VXProtocol& group) {
  Identifiers members = ScanTreeOf(context.services, protocolId);
  if (!WriteGroup(group, kGroupDataFile, members)) return false;
  context.state.groupMembers = std::move(members);
  FindNextGroupObject(context);
  return true;
}

void PutAssemblyIntoGroup(const CommandContext& context, VXProtocol& group) {
  VXProtocol assembly(context.services.protocols);
  if (!DescribeActiveAssembly(context, assembly)) return;
  group.PutProtocol(assembly.GetProtocolID(), assembly.GetProtocolID());
  MarkAsScanned(context.services, assembly);
}

// The CAD may let another scan in while it is asked: that one's members are the newer ones then.
void FindNextGroupObject(const CommandContext& context) {
  CommandState& state = context.state;
  state.nextGroupObject.clear();
  const Identifiers members = std::exchange(state.groupMembers, {});
  auto member = members.begin();
  while (member != members.end() && IsInCad(context.services, *member)) ++member;
  if (member == members.end() || !state.groupMembers.empty() || !state.nextGroupObject.empty()) {
    return;
  }
  state.nextGroupObject = *member;
  state.groupMembers.assign(member + 1, members.end());
}

}  // namespace quillmar
