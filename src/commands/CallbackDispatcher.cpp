#include "commands/CallbackDispatcher.h"

#include <optional>

#include "base/RegistryKey.h"
#include "bom/BomData.h"
#include "commands/CadWindow.h"
#include "commands/Commands.h"
#include "commands/DependentViews.h"
#include "parts/CadListReaders.h"
#include "parts/PartFactory.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

// Data files of bolted-connection calculations, compared without regard to case.
constexpr const char* kBoltedConnectionFiles[] = {"KEELDATA|THRJOIN", "THRJOIN"};

constexpr const char* kWizardReconnect = "2";
constexpr int kClipboardDrawn = -1;

bool IsBoltedConnection(const std::string& dataFile) {
  for (const char* file : kBoltedConnectionFiles) {
    if (platform::EqualsNoCase(dataFile, file)) return true;
  }
  return false;
}

bool IsOne(VXProtocol& protocol, TextRef section, TextRef key) {
  int value = 0;
  return protocol.GetKeyWordInt(section, key, value) && value == 1;
}

}  // namespace

CallbackDispatcher::CallbackDispatcher(const PartServices& owner) : services(owner) {}

void CallbackDispatcher::OnCallback() {
  const int code = services.host.CallInt(QM_HOST_CALLBACK_CODE, {});
  const std::string list = services.host.CallText(QM_HOST_CALLBACK_LIST, {});
  for (const std::string& protocolId : SplitKeepingEmpty(list, ',')) Dispatch(code, protocolId);
}

void CallbackDispatcher::Dispatch(int code, const std::string& protocolId) {
  const FirstLook look = LookAt(protocolId);
  if (look.boltedConnection) return InsertBoltedConnection(protocolId);
  if (code == QM_CALLBACK_FROM_REFERENCE) return DrawFromReference(protocolId);
  Perform(code, protocolId, look.letMeKnow);
}

CallbackDispatcher::FirstLook CallbackDispatcher::LookAt(const std::string& protocolId) {
  FirstLook look;
  VXProtocol protocol(services.protocols, protocolId);
  std::string dataFile;
  protocol.GetKeyWord(section::kMain, keyword::kDataFile, dataFile);
  std::string letMeKnow;
  protocol.GetKeyWord(section::kSpecial, keyword::kLetMeKnow, letMeKnow);
  if (!letMeKnow.empty()) {
    protocol.EraseSection(section::kSpecial);
    look.letMeKnow = letMeKnow == "1";
  }
  if (IsBoltedConnection(dataFile) && !services.session.groupManager) {
    std::string bolt;
    protocol.GetKeyWord(section::kMcwParts, keyword::kBolt, bolt);
    look.boltedConnection = !bolt.empty();
  }
  return look;
}

void CallbackDispatcher::InsertBoltedConnection(const std::string& protocolId) {
  BringCadToFront(services);
  services.bolted.InsertBoltedConnection(protocolId);
}

// The identifier names an object in the CAD that another calculation drew.
void CallbackDispatcher::DrawFromReference(const std::string& protocolId) {
  std::string reference;
  const bool resolved = ReadCadReference(services.driver, protocolId, reference);
  if (resolved) HandleReference(reference);
  services.host.CallInt(QM_HOST_DRAWN, {resolved ? protocolId : std::string()});
}

void CallbackDispatcher::HandleReference(const std::string& reference) {
  VXProtocol protocol(services.protocols);
  if (protocol.OpenFromReference(reference, false, Markers::Standard) == 0) {
    services.host.CallInt(QM_HOST_DRAWN, {std::string()});
  }
  ConvertProtocol(services.session, services.converter.get(), protocol, 0);
  RefreshBomData(protocol);
  protocol.SetDrawn(!services.session.groupManager);
}

void CallbackDispatcher::Perform(int code, const std::string& protocolId, bool letMeKnow) {
  // Held apart so that each is gone exactly when the host may work with the protocol again.
  std::optional<VXProtocol> protocol;
  protocol.emplace(services.protocols, protocolId);
  if (!protocol->IsReady()) {
    Fail("Cannot open protocol", QM_HERE);
    return;
  }
  std::unique_ptr<VXPart> part = PartFor(*protocol);
  BringCadToFront(services);
  const bool updateAll = IsOne(*protocol, section::kHexaplan, keyword::kUpdateAll);
  ReconnectWizardProtocol(*protocol);
  const Outcome outcome = Act(WithoutNewView(code, *protocol), *protocol, *part);
  BringUpToDate(*protocol, protocolId);
  part.reset();
  if (outcome.succeeded) {
    NoteSuccess(*protocol);
    protocol.reset();
  } else {
    NoteFailure(*protocol, outcome.updateFailed);
    protocol.reset();
    // The user gets the calculation back and may try again.
    services.host.ShowCalculation(protocolId);
  }
  if (letMeKnow) WriteCompletionMarker(protocolId);
  if (updateAll) services.host.CallNone(QM_HOST_UPDATE_ALL, {});
}

std::unique_ptr<VXPart> CallbackDispatcher::PartFor(VXProtocol& protocol) {
  auto part = CreatePartForProtocol(services, protocol);
  return part ? std::move(part) : std::make_unique<VXPart>(services, protocol);
}

// The data wizard asks once for its own protocol to be connected again. That may be the one that
// is open here: a second object on it would close it in the store when it goes.
void CallbackDispatcher::ReconnectWizardProtocol(VXProtocol& protocol) {
  std::string operation;
  protocol.GetGlobalData(global::kWdOperation, operation);
  if (operation.empty()) return;
  protocol.PutGlobalData(global::kWdOperation, "");
  if (operation != kWizardReconnect) return;
  std::string wizardId;
  protocol.GetGlobalData(global::kWdProtocol, wizardId);
  if (wizardId.empty()) return;
  if (wizardId == protocol.GetProtocolID()) return Reconnect(protocol, wizardId);
  VXProtocol wizard(services.protocols, wizardId);
  if (wizard.IsReady()) Reconnect(wizard, wizardId);
}

void CallbackDispatcher::Reconnect(VXProtocol& protocol, const std::string& protocolId) {
  std::string connection;
  if (!protocol.MakeReference(connection, Markers::Standard)) return;
  services.driver.ConnectProtocol(protocolId.c_str(), connection.c_str());
}

// Where new views are switched off, a view becomes a part of its own.
int CallbackDispatcher::WithoutNewView(int code, VXProtocol& protocol) {
  RegistryKey key;
  if (!key.Open(platform::Hive::LocalMachine, services.options.Key() + "\\Quillmar") ||
      key.ReadDword("DisableNewView") == 0) {
    return code;
  }
  DetachView(protocol);
  return code == QM_CALLBACK_NEW_VIEW ? QM_CALLBACK_NEW_PART : code;
}

CallbackDispatcher::Outcome CallbackDispatcher::Act(int code, VXProtocol& protocol, VXPart& part) {
  switch (code) {
    case QM_CALLBACK_NEW_PART:
      return {part.Insert(InsertMode::Plain) || Fail("Cannot insert part", QM_HERE), false};
    case QM_CALLBACK_NEW_VIEW:
      return {part.Insert(InsertMode::Child) || Fail("Cannot insert new view", QM_HERE), false};
    case QM_CALLBACK_RECALCULATED: {
      const bool updated = part.Update() || Fail("Cannot update part", QM_HERE);
      return {updated, !updated};
    }
    case QM_CALLBACK_CLIPBOARD_OR_CHANGED_TYPE:
      return ActOnClipboardOrType(protocol, part);
    default:
      return {};
  }
}

CallbackDispatcher::Outcome CallbackDispatcher::ActOnClipboardOrType(VXProtocol& protocol,
                                                                     VXPart& part) {
  if (IsOne(protocol, section::kCadx, keyword::kUpdate)) {
    const bool updated = part.Update() || Fail("Cannot change type of part", QM_HERE);
    return {updated, !updated};
  }
  const bool inserted =
      part.Insert(InsertMode::Clipboard) || Fail("Cannot draw part according to", QM_HERE);
  services.host.CallInt(QM_HOST_COMMAND, {kClipboardDrawn});
  return {inserted, false};
}

void CallbackDispatcher::BringUpToDate(VXProtocol& protocol, const std::string& protocolId) {
  if (VXProtocol::ProtocolExists(services.protocols, protocolId) == QM_PROTOCOL_MISSING) {
    protocol.Open(protocolId);
  }
  ConvertProtocol(services.session, services.converter.get(), protocol, 0);
  RefreshBomData(protocol);
}

void CallbackDispatcher::NoteFailure(VXProtocol& protocol, bool updateFailed) {
  const bool fromSymbols = IsOne(protocol, section::kHexaplan, keyword::kFromSymbols);
  protocol.EraseKeyWord(section::kHexaplan, keyword::kFromSymbols);
  if (fromSymbols) protocol.PutCadx(keyword::kRecalcAgain, "1");
  if (!updateFailed) protocol.EraseCadx(keyword::kReallySmartPart);
}

void CallbackDispatcher::NoteSuccess(VXProtocol& protocol) {
  if (IsOne(protocol, section::kCadx, keyword::kDoNotErase)) {
    protocol.SetDrawn(!services.session.groupManager);
  }
}

void CallbackDispatcher::WriteCompletionMarker(const std::string& protocolId) {
  VXProtocol protocol(services.protocols, protocolId);
  if (!RegisterCadSideProtocol(services, protocol, protocolId)) return;
  RegistryKey key;
  if (key.Create(platform::Hive::CurrentUser, GetModuleRegistryKey(true) + "Fendrake")) {
    key.WriteDword("Done", 1);
  }
}

bool CallbackDispatcher::Fail(const char* step, const SourceStamp& source) {
  services.errors.ReportFailure(step);
  services.errors.ReportError(step, source);
  return false;
}

}  // namespace quillmar
