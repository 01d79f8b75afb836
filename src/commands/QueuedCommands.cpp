#include "commands/QueuedCommands.h"

#include "base/Texts.h"
#include "commands/DependentViews.h"
#include "commands/ProtocolCopies.h"
#include "commands/ProtocolQueries.h"
#include "commands/SelectionStep.h"
#include "parts/ObtainProtocol.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

// What host method QM_HOST_COMMAND does with the copy that it finds.
constexpr int kPlaceCopy = 1;
constexpr int kReplaceByCopy = 2;

// Data files of the calculations behind a bolted connection's parts.
constexpr const char* kBoltedConnectionFiles[] = {"wbolcon", "THRJOIN"};

constexpr int kEditProtocols = 5555;
constexpr int kConnectionEditor = 10;

bool MarkHasIdentity(VXProtocol& protocol) { return protocol.PutCadx(keyword::kHasIdentity, "1"); }

bool MarkForUpdate(VXProtocol& protocol) {
  return MarkHasIdentity(protocol) && protocol.PutCadx(keyword::kToUpdate, "1");
}

int TellHost(const PartServices& services, int command) {
  services.host.CallInt(QM_HOST_COMMAND, {command});
  return 1;
}

// Copies what is selected under an identity of its own and lets the host work on the copy.
int HandOverCopy(const PartServices& services, WorkingCopy& selected, int command) {
  VXProtocol copy(services.protocols);
  if (!CopyUnderOwnIdentity(selected.Protocol(), copy)) return 0;
  selected.Keep();
  copy.Close();
  return TellHost(services, command);
}

// --- recalculation ---

int ShowForRecalculation(const PartServices& services, WorkingCopy& copy) {
  VXProtocol& protocol = copy.Protocol();
  if (!MarkForUpdate(protocol) || !protocol.PutCadx(keyword::kRecalcAgain, "1")) return 0;
  services.host.ShowCalculation(copy.Keep());
  return 1;
}

bool BelongsToBoltedConnection(VXProtocol& protocol) {
  std::string dataFile;
  protocol.GetKeyWord(section::kMcwData, keyword::kMcwDataFile, dataFile);
  dataFile.erase(0, dataFile.find('|') + 1);
  for (const char* file : kBoltedConnectionFiles) {
    if (platform::EqualsNoCase(dataFile, file)) return true;
  }
  return false;
}

int RecalculateBoltedConnection(const PartServices& services, VXProtocol& component) {
  std::string reference;
  component.GetKeyWord(section::kMcwData, keyword::kMcwMainProt, reference);
  WorkingCopy main(services);
  if (!main.Open(reference, true, Markers::Alternate)) return 0;
  return ShowForRecalculation(services, main);
}

int RecalculateSource(const PartServices& services, VXProtocol& view) {
  const std::string id = SourceOfView(view);
  if (!ObtainSourceOfView(services, view)) return 0;
  VXProtocol source(services.protocols, id);
  if (!source.IsReady() || !MarkForUpdate(source) || !source.PutCadx(keyword::kRecalcAgain, "1")) {
    return 0;
  }
  source.Close();
  services.host.ShowCalculation(id);
  return 1;
}

// Which calculation is shown for a dependent view.
enum class ViewRule { OwnCalculation, SourceCalculation, NoViewAnyMore };

int Recalculate(const CommandContext& context, ViewRule rule) {
  const PartServices& services = context.services;
  WorkingCopy selected(services);
  if (!OpenSelected(services, selected) || !IsForCalculation(selected)) return 0;
  VXProtocol& protocol = selected.Protocol();
  if (BelongsToBoltedConnection(protocol)) return RecalculateBoltedConnection(services, protocol);
  if (protocol.GetNewView() != 0) {
    if (rule == ViewRule::SourceCalculation) return RecalculateSource(services, protocol);
    if (rule == ViewRule::NoViewAnyMore) {
      DetachView(protocol);
    } else if (!ObtainSourceOfView(services, protocol)) {
      return 0;
    }
  }
  return ShowForRecalculation(services, selected);
}

// --- bolted connections ---

// A protocol that carries the list to its receiver, who answers with another one.
bool WriteHandOver(const CommandContext& context, VXProtocol& letter,
                   const std::vector<std::string>& protocols) {
  return letter.CreateNew() != 0 &&
         letter.PutKeyWord(section::kMain, keyword::kProtocols, JoinList(protocols, ',')) &&
         letter.PutKeyWord(section::kMain, keyword::kCaller, context.state.currentAssembly);
}

}  // namespace

int UpdateSelected(const CommandContext& context) {
  const PartServices& services = context.services;
  WorkingCopy selected(services);
  if (!OpenSelected(services, selected) || !PrepareView(services, selected.Protocol()) ||
      !IsForCalculation(selected) || !MarkForUpdate(selected.Protocol())) {
    return 0;
  }
  services.host.CallInt(QM_HOST_RUN_COMMAND, {selected.Keep()});
  return 1;
}

int CopySelected(const CommandContext& context) {
  const PartServices& services = context.services;
  WorkingCopy selected(services);
  if (!OpenSelected(services, selected) || !PrepareView(services, selected.Protocol()) ||
      !IsForCalculation(selected) || !MarkHasIdentity(selected.Protocol())) {
    return 0;
  }
  return HandOverCopy(services, selected, kPlaceCopy);
}

int ReplaceSelected(const CommandContext& context) {
  const PartServices& services = context.services;
  WorkingCopy selected(services);
  if (!OpenSelected(services, selected) || !IsForCalculation(selected)) return 0;
  VXProtocol& protocol = selected.Protocol();
  if (!MarkForUpdate(protocol)) return 0;
  std::string replaced;
  protocol.GetKeyWord(section::kObject, keyword::kProtId, replaced);
  if (!protocol.PutCadx(keyword::kOldPartPid, replaced)) return 0;
  return HandOverCopy(services, selected, kReplaceByCopy);
}

int RecalculateSelected(const CommandContext& context) {
  return Recalculate(context, ViewRule::OwnCalculation);
}

int RecalculateWithViews(const CommandContext& context) {
  return Recalculate(context, ViewRule::SourceCalculation);
}

int RecalculateAsIndependentPart(const CommandContext& context) {
  return Recalculate(context, ViewRule::NoViewAnyMore);
}

int HandOverBoltedConnection(const CommandContext& context) {
  const PartServices& services = context.services;
  WorkingCopy selected(services);
  if (!OpenSelected(services, selected) || !IsForCalculation(selected)) return 0;
  std::string reference;
  if (!BelongsToBoltedConnection(selected.Protocol()) ||
      !selected.Protocol().MakeReference(reference, Markers::Standard)) {
    return 0;
  }
  const auto protocols = GetAllMcwProtocolIds(services, reference);
  if (!protocols || protocols->empty()) return 0;
  VXProtocol letter(services.protocols);
  if (!WriteHandOver(context, letter, *protocols)) return 0;
  const std::string id = letter.GetProtocolID();
  letter.Close();
  if (context.ipc.SendModelessMessage(kEditProtocols, kConnectionEditor, id) != 0) return 1;
  letter.Open(id);
  letter.Erase();
  return 0;
}

}  // namespace quillmar
