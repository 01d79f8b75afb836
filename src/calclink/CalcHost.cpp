#include "calclink/CalcHost.h"

#include "calclink/NotificationVocabulary.h"
#include "platform/Files.h"
#include "platform/Processes.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

using platform::AutomationArguments;
using platform::AutomationResult;
using platform::AutomationStatus;
using platform::AutomationType;

constexpr std::uint32_t kReadyTimeout = 11000;  // milliseconds
constexpr const char* kSessionKind = "258";
constexpr const char* kSessionVariant = "D";

int IntOf(const AutomationResult& result) {
  const int* value = std::get_if<int>(&result.value);
  return result.status == AutomationStatus::Done && value != nullptr ? *value : 0;
}

// Keeps the guard of a connection attempt set for the attempt's length.
class Guard {
 public:
  explicit Guard(bool& held) : flag(held) { flag = true; }
  ~Guard() { flag = false; }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

 private:
  bool& flag;
};

}  // namespace

CalcHost::CalcHost(Collaborators collaborators) : with(std::move(collaborators)) {}

int CalcHost::Connect(bool startIfNeeded) {
  if (connecting) return 1;
  const Guard guard(connecting);
  if (IsAttached()) {
    OnConnected();
    // A host whose program is gone was let go by that; then another one is looked for.
    if (IsAttached()) return 1;
  }
  platform::InitializeAutomation();
  if (progId.empty()) {
    platform::DebugOutput("WARNING: m_strProgId is empty. Call SetProgId to set it\n");
    return 0;
  }
  AttachToRunningHost();
  if (closing || (!startIfNeeded && !IsAttached())) return 0;
  if (!IsAttached()) StartHost();
  if (!IsAttached()) CreateHost();
  if (!IsAttached()) return 0;
  OnConnected();
  return 1;
}

void CalcHost::AttachToRunningHost() {
  if (const auto classId = platform::FindAutomationClass(progId)) {
    dispatch = platform::FindActiveObject(*classId);
  }
}

void CalcHost::CreateHost() {
  if (const auto classId = platform::FindAutomationClass(progId)) {
    dispatch = platform::CreateAutomationObject(*classId);
  }
}

int CalcHost::StartHost() {
  const std::string program = with.paths.GetSuiteFolder() + "\\" QM_HOST_PROGRAM;
  auto process = platform::StartProgram({.program = platform::ShortPathName(program),
                                         .commandLine = {},
                                         .folder = {},
                                         .show = platform::ShowMode::MinimizedWithoutActivation});
  if (!process) return 0;
  process->WaitUntilIdle();
  const auto classId = platform::FindAutomationClass(QM_HOST_PROGID);
  if (!classId) return 0;
  dispatch = platform::FindActiveObject(*classId);
  return Connect(false);
}

int CalcHost::OnConnected() {
  if (!WaitUntilReady()) return 0;
  const auto session = with.session();
  if (session && !closing) SendSession(*session);
  return 1;
}

// Asks without showing errors: a host that is still starting answers some calls with one.
bool CalcHost::WaitUntilReady() {
  const std::uint32_t start = platform::TickCount();
  while (IsAttached()) {
    if (IntOf(CallAttached(QM_HOST_IS_READY, {}, AutomationType::Int)) == 1) return true;
    if (platform::TickCount() - start >= kReadyTimeout) return false;
  }
  return false;
}

void CalcHost::SendSession(const HostSession& session) {
  CallIntIfOffered(QM_HOST_NAME_SET_CAD_WINDOW, QM_HOST_SET_CAD_WINDOW,
                   {static_cast<int>(session.cadWindow)});
  if (!session.modelFolder.empty() || !session.extensions.empty()) {
    CallIntIfOffered(QM_HOST_NAME_SET_CAD_SPECIFIC, QM_HOST_SET_CAD_SPECIFIC,
                     {session.modelFolder, session.extensions});
  }
  if (!session.settingsName.empty()) CallInt(QM_HOST_SETTINGS_NAME, {session.settingsName});
  CallInt(QM_HOST_SHOW_FLAG, {session.showFlag});
  CallNone(QM_HOST_SESSION, {session.mode, session.callbackWindow, std::string(kSessionKind),
                             std::string(kSessionVariant)});
  InvokeIfOffered(QM_HOST_NAME_SET_SMART_MODE, QM_HOST_SET_SMART_MODE, {session.smartFlag},
                  AutomationType::None);
}

// A call to a host that is attached. The object is held by a reference of its own: the call may
// let messages through, and what they run may detach the host.
AutomationResult CalcHost::CallAttached(int method, const AutomationArguments& arguments,
                                        AutomationType type) {
  const auto host = dispatch;
  if (!host) return {};
  AutomationResult result = host->Call(method, arguments, type);
  if (result.status == AutomationStatus::ServerGone && dispatch == host) {
    // Nothing behind the pointer any more; the next connect looks for another host.
    dispatch.reset();
  }
  return result;
}

AutomationResult CalcHost::CallAndShow(int method, const AutomationArguments& arguments,
                                       AutomationType type) {
  AutomationResult result = CallAttached(method, arguments, type);
  if (result.status == AutomationStatus::Raised) with.showError(result.description);
  return result;
}

AutomationResult CalcHost::Invoke(int method, const AutomationArguments& arguments,
                                  AutomationType type) {
  if (Connect(true) == 0) return {};
  return CallAndShow(method, arguments, type);
}

AutomationResult CalcHost::InvokeIfOffered(TextRef name, int method,
                                           const AutomationArguments& arguments,
                                           AutomationType type) {
  if (Connect(true) == 0) return {};
  const auto host = dispatch;
  if (!host || !host->FindMember(name.Get())) return {};
  return CallAndShow(method, arguments, type);
}

int CalcHost::CallInt(int method, const AutomationArguments& arguments) {
  return IntOf(Invoke(method, arguments, AutomationType::Int));
}

std::string CalcHost::CallText(int method, const AutomationArguments& arguments) {
  const AutomationResult result = Invoke(method, arguments, AutomationType::Text);
  const std::string* text = std::get_if<std::string>(&result.value);
  return result.status == AutomationStatus::Done && text != nullptr ? *text : std::string();
}

bool CalcHost::CallNone(int method, const AutomationArguments& arguments) {
  return Invoke(method, arguments, AutomationType::None).status == AutomationStatus::Done;
}

int CalcHost::CallIntIfOffered(TextRef name, int method, const AutomationArguments& arguments) {
  return IntOf(InvokeIfOffered(name, method, arguments, AutomationType::Int));
}

int CalcHost::ShowCalculation(const std::string& protocolId) {
  VXProtocol::CloseById(with.protocols, protocolId);
  return CallInt(QM_HOST_SHOW_CALCULATION, {protocolId});
}

std::string CalcHost::CompanionFolder() {
  std::string folder = CallText(QM_HOST_COMPANION_FOLDER, {});
  if (folder.empty()) return with.paths.GetSuiteFolder();
  if (folder.ends_with('\\')) folder.pop_back();
  return folder;
}

int CalcHost::AnnounceProtocol(const std::string& protocolId) {
  return CallInt(QM_HOST_ANNOUNCE, {protocolId});
}

bool CalcHost::WriteFile(const std::string& protocolId, int fileType) {
  const AutomationResult result =
      Invoke(QM_HOST_WRITE_FILE, {protocolId, fileType}, AutomationType::Short);
  const auto* written = std::get_if<std::int16_t>(&result.value);
  return result.status == AutomationStatus::Done && written != nullptr && *written != 0;
}

int CalcHost::SendShowFlag(int showFlag) {
  return IntOf(CallAndShow(QM_HOST_SHOW_FLAG, {showFlag}, AutomationType::Int));
}

void CalcHost::RequestExit(bool endHost) {
  VXProtocol request(with.protocols);
  request.CreateNew();
  request.PutGlobalData(global::kExit, endHost ? "1" : "0");
  with.ipc.SendModelessMessage(notification::kExitRequest, notification::kExitInteger,
                               request.GetProtocolID());
  request.Close();
}

void CalcHost::Detach() {
  if (dispatch) dispatch->Abandon();
  dispatch.reset();
}

}  // namespace quillmar
