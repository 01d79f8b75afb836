#include "parts/VXPart.h"

#include "base/Texts.h"
#include "bom/BomData.h"
#include "naming/FileNames.h"
#include "naming/NameTokens.h"
#include "parts/ExtendedData.h"
#include "parts/ParameterLists.h"
#include "parts/PartFactory.h"
#include "parts/PhysicalProperties.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr int kTextPartFiles = 3;
constexpr int kRemoveSpaces = 1;
// A protocol in this state of optimisation is left in it.
constexpr int kOptimKept = 4;
// How far a CAD object has to follow its protocol; any other state leaves it alone.
constexpr int kChangedFully = 0;
constexpr int kReconnectOnly = 1;

}  // namespace

VXPart::VXPart(const PartServices& owner, VXProtocol& represented)
    : services(owner), protocol(represented) {}

// --- what kinds replace ---

bool VXPart::MakeFileName(bool change, bool modelChanged) {
  const FileNameContext context{services.driver, services.options, services.fileNames,
                                services.texts, services.ids};
  const FileNameRequest request{
      .protocol = protocol,
      .local = IsLocal(),
      .change = change,
      .modelChanged = modelChanged,
      .sessionWithoutNames = services.session.groupManager || services.session.optimizer,
      .caption = caption,
      .extension = GetFileExtension(),
      .typeName = GetFileTypeName(),
      .modelFilePath = [this](std::string& path) { return GetModelFilePath(path); },
      .wantsFolder = [this] { return WantsDescription(); }};
  return quillmar::MakeFileName(context, request, filePath);
}

bool VXPart::GetModelFilePath(std::string&) { return false; }
bool VXPart::CreatePartFile() { return false; }
bool VXPart::InsertIntoCad(const std::string&, const ExtDataPairs&) { return false; }
bool VXPart::ChangeInCad(const std::string&, const ExtDataPairs&) { return false; }
bool VXPart::ReadBackFromCad() { return true; }
bool VXPart::WantsDescription() { return false; }
bool VXPart::BeforeConnect() { return true; }
std::string VXPart::GetFileExtension() { return services.session.modelExt; }
std::string VXPart::GetFileTypeName() { return services.texts.GetText(kTextPartFiles); }
std::string VXPart::DescriptionSuffix() { return {}; }

// --- insert ---

bool VXPart::Insert(InsertMode mode) {
  if (!Describe()) return false;
  TakeOverState();
  MarkView(mode);
  RefreshBomData(protocol);
  if (mode != InsertMode::Plain) protocol.EraseCadx(keyword::kPartName);
  if (!CreatePartFile()) return Fail("Cannot create part file.", QM_HERE);
  if (!ReconnectSource(mode) || !DrawInCad(mode)) return false;
  FinishOptimState();
  if (loop == 0) return true;
  ReadBackAfterLoop();
  return false;
}

bool VXPart::Describe() {
  if (!WantsDescription()) return true;
  if (!DetermineLocalFlag()) return false;
  BuildCaption();
  return true;
}

void VXPart::TakeOverState() {
  protocol.GetKeyWordInt(section::kCadx, keyword::kFromCad, fromCad);
  StoreModelId();
  ReadLoop();
  if (!services.session.groupManager) protocol.PutCadx(keyword::kOptim, "0");
}

// Views are not counted in the bill of materials.
void VXPart::MarkView(InsertMode mode) {
  const bool isView = mode == InsertMode::Child || mode == InsertMode::View;
  if (isView) protocol.SetNewView(1);
  protocol.PutGlobalData(global::kBomCount, isView ? "0" : "1");
}

bool VXPart::DrawInCad(InsertMode mode) {
  BeforeConnect();
  const ExtDataPairs pairs = BuildExtendedData();
  Views views = MakeViews(mode);
  std::string connection;
  if (!protocol.MakeReference(connection, Markers::Standard)) {
    return Fail("Cannot prepare protocol.", QM_HERE);
  }
  if (!views.empty()) return DriveViews(Step::Insert, views, connection, pairs);
  return InsertIntoCad(connection, pairs) || Fail("Cannot insert part into cad system.", QM_HERE);
}

void VXPart::ReadBackAfterLoop() {
  auto part = CreatePartForProtocol(services, protocol);
  if (!part || !part->ReadBackFromCad()) {
    Fail("Cannot get extended information", QM_HERE);
    return;
  }
  part.reset();
  ReadPhysicalProperties(services, protocol);
}

// --- reconnecting the object that a pasted or dependent part comes from ---

bool VXPart::ReconnectSource(InsertMode mode) {
  if (mode == InsertMode::Clipboard) return ReconnectClipboard();
  return mode != InsertMode::Child || ReconnectParent();
}

bool VXPart::ReconnectClipboard() {
  VXProtocol clipboard(services.protocols);
  std::string sourceId;
  return clipboard.OpenClipboard() &&
         clipboard.GetKeyWord(section::kObject, keyword::kProtId, sourceId) &&
         ReconnectOther(sourceId);
}

// A parent is named with the link it is linked by behind an "@".
bool VXPart::ReconnectParent() {
  std::vector<std::string> parents;
  if (!protocol.GetParentsList(parents) || parents.size() != 1) return false;
  return ReconnectOther(parents.front().substr(0, parents.front().find('@')));
}

// A protocol that names itself stays the one that is open: a second object on it would close it in
// the store when it goes.
bool VXPart::ReconnectOther(const std::string& protocolId) {
  if (protocolId == protocol.GetProtocolID()) return Reconnect(protocol);
  VXProtocol other(services.protocols, protocolId);
  return other.IsReady() && Reconnect(other);
}

bool VXPart::Reconnect(VXProtocol& other) {
  if (const auto part = CreatePartForProtocol(services, other)) part->BeforeConnect();
  std::string connection;
  return other.MakeReference(connection, Markers::Standard) &&
         services.driver.ConnectProtocol(other.GetProtocolID().c_str(), connection.c_str()) != 0;
}

// --- update ---

bool VXPart::Update() {
  if (caption.empty()) BuildCaption();
  RefreshBomData(protocol);
  ReadLoop();
  protocol.GetKeyWordInt(section::kCadx, keyword::kFromCad, fromCad);
  if (!services.session.groupManager) protocol.PutCadx(keyword::kOptim, "0");
  if (!CreatePartFile()) return false;
  BeforeConnect();
  const ExtDataPairs pairs = BuildExtendedData();
  protocol.PutCadx(keyword::kModelError, "0");
  Views views = CollectViews();
  std::string connection;
  if (!protocol.MakeReference(connection, Markers::Standard)) return false;
  if (views.empty()) {
    if (!ChangeObject(connection, pairs)) return false;
  } else {
    OrderViews(views);
    CopyCadValues(views);
    if (!DriveViews(Step::Change, views, connection, pairs)) return false;
  }
  FinishOptimState();
  if (loop != 0) protocol.PutCadx(keyword::kFromCad, "1");
  return true;
}

// A loop goes on when a change fails; it only notes that the model cannot be built so.
bool VXPart::ChangeObject(const std::string& connection, const ExtDataPairs& pairs) {
  if (ChangeInCad(connection, pairs)) return true;
  if (loop == 0) return false;
  protocol.PutCadx(keyword::kModelError, "1");
  return true;
}

// --- information ---

std::optional<PartInformation> VXPart::Inform(bool change, bool modelChanged) {
  int origin = 0;
  protocol.GetKeyWordInt(section::kCadx, keyword::kFromCad, origin);
  fromCad = origin == 1 ? 1 : 0;
  if (!MakeFileName(change, modelChanged)) return std::nullopt;
  PartInformation information{IsLocal(), {}, filePath, caption};
  GetModelFilePath(information.modelPath);
  return information;
}

// --- state kept in the protocol ---

void VXPart::StoreModelId() {
  std::string modelId;
  protocol.GetModelID(modelId);
  protocol.PutGlobalData(global::kOldModelId, modelId);
}

bool VXPart::HasOtherModel() {
  std::string modelId;
  protocol.GetModelID(modelId);
  std::string oldModelId;
  protocol.GetGlobalData(global::kOldModelId, oldModelId);
  return !platform::EqualsNoCase(modelId, oldModelId);
}

void VXPart::ReadLoop() {
  loop = 0;
  protocol.GetKeyWordInt(section::kCadx, keyword::kLoop, loop);
  protocol.PutCadx(keyword::kLoop, "0");
}

void VXPart::FinishOptimState() {
  int optim = 0;
  protocol.GetKeyWordInt(section::kCadx, keyword::kOptim, optim);
  if (optim != kOptimKept) protocol.PutCadx(keyword::kOptim, loop != 0 ? "1" : "0");
}

bool VXPart::DetermineLocalFlag() {
  const bool known = protocol.GetKeyWordInt(section::kCadx, keyword::kReallySmartPart, smartPart);
  if (!known) {
    smartPart = 0;
    if (!services.options.SmartParts() && !services.session.groupManager) {
      smartPart = 1;
    } else {
      protocol.GetKeyWordInt(section::kCadx, keyword::kSmartPart, smartPart);
    }
  }
  return protocol.PutKeyWordInt(section::kCadx, keyword::kReallySmartPart, smartPart);
}

void VXPart::BuildCaption() {
  const OptionsStore& options = services.options;
  protocol.GetKeyWord(section::kObject, keyword::kCadDescription, caption);
  if (caption.empty()) protocol.GetGlobalData(global::kCaption, caption);
  if (caption.empty()) {
    std::string fields[3];
    for (int i = 0; i < 3; ++i) protocol.GetBom(i + 1, fields[i]);
    caption = fields[0] + " " + fields[1] + " " + fields[2];
  }
  if (options.CaptionTemplate().empty()) {
    caption += DescriptionSuffix();
  } else {
    caption = ExpandNameTemplate(options.CaptionTemplate(), protocol, services.ids);
  }
  if (options.UpperCase()) caption = platform::UpperCase(caption);
  if (options.ReplaceSpaces() != 0) {
    caption = ReplaceAll(caption, " ", options.ReplaceSpaces() == kRemoveSpaces ? "" : "_");
  }
}

// --- what kinds use ---

bool VXPart::BuildParameterList(std::string& text, const std::string& group, ListForm form) {
  if (!quillmar::BuildParameterList(protocol, form, group, text)) {
    Fail("There are no data in protocol", QM_HERE);
  }
  return true;
}

ExtDataPairs VXPart::BuildExtendedData() { return quillmar::BuildExtendedData(services, protocol); }

bool VXPart::PrepareParameters(std::string& parameters, const SourceStamp& source) {
  return BuildParameterList(parameters) || Fail("Cannot prepare list of parameters", source);
}

bool VXPart::ChangeByState(const std::string& connection, const SourceStamp& source,
                           const std::function<bool()>& changeFully) {
  const int changed = services.session.groupManager ? kChangedFully : protocol.IsChanged();
  if (changed == kChangedFully) return changeFully();
  if (changed != kReconnectOnly) return true;
  return services.driver.ConnectProtocol(protocol.GetProtocolID().c_str(), connection.c_str()) !=
             0 ||
         Fail("Cannot update protocol", source);
}

// The store hands out an identifier with a new protocol; nothing but the identifier is wanted.
std::string VXPart::WithFreshIdentity(const std::string& connection) {
  if (IsLocal() || (services.session.showFlag & kKeepSharedIdentity) != 0) return connection;
  VXProtocol fresh(services.protocols);
  if (fresh.CreateNew() == 0) return connection;
  const std::string freshId = fresh.GetProtocolID();
  fresh.Erase();
  return ReplaceAll(connection, protocol.GetProtocolID(), freshId);
}

std::string VXPart::LibraryModelPath(const std::string& modelId) {
  std::string folder;
  protocol.GetGlobalData(global::kPath, folder);
  if (folder.ends_with('\\')) folder.pop_back();
  return folder + "\\" + services.session.modelDirName + "\\" + modelId + "." + GetFileExtension();
}

bool VXPart::ReadParametersBack(CadList plainList) {
  const CadList list =
      OffersList(services.driver, CadList::ParametersEx) ? CadList::ParametersEx : plainList;
  if (!OffersList(services.driver, list)) return true;
  std::string text;
  if (!ReadCadList(services.driver, services.errors, list, protocol.GetProtocolID(), text)) {
    return false;
  }
  ApplyParameterList(protocol, services.session, text, {});
  return true;
}

void VXPart::ReadFeatureStatesBack() {
  std::string text;
  if (ReadCadList(services.driver, services.errors, CadList::FeaturesState,
                  protocol.GetProtocolID(), text)) {
    ApplyParameterList(protocol, services.session, text, kFeatureStates);
  }
}

// Only the list can fail: a CAD that does not take the states is no failure of the change.
bool VXPart::SendFeatureStates(const SourceStamp& source) {
  std::string states;
  if (!BuildParameterList(states, kFeatureStates)) {
    return Fail("Cannot prepare list of features", source);
  }
  if (services.driver.SetFeaturesState && !states.empty()) {
    services.driver.SetFeaturesState(protocol.GetProtocolID().c_str(), states.c_str());
  }
  return true;
}

bool VXPart::IsDrivenFurtherUp(const std::string& protocolId) const {
  for (const VXPart* part = this; part != nullptr; part = part->drivenBy) {
    if (platform::EqualsNoCase(part->protocol.GetProtocolID(), protocolId)) return true;
  }
  return false;
}

bool VXPart::Fail(const char* message, const SourceStamp& source) const {
  services.errors.ReportError(message, source);
  return false;
}

}  // namespace quillmar
