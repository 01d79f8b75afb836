#include "commands/SessionLogin.h"

#include "base/RegistryKey.h"
#include "platform/Processes.h"
#include "platform/System.h"

namespace quillmar {
namespace {

using platform::Hive;

constexpr const char* kGroupManagerProgram = "Grupova.exe";
constexpr const char* kOptimizerProgram = "optara.exe";
constexpr int kGroupManagerWithoutCad = -1;
constexpr const char* kModuleFile = "Quillmar.dll";

std::string SessionKey() { return GetModuleRegistryKey(true) + "Quillmar"; }

bool OpenOrCreate(RegistryKey& key, const std::string& path) {
  return key.Open(Hive::CurrentUser, path) || key.Create(Hive::CurrentUser, path);
}

// Name of the folder that holds a file; the whole path when it names no folder.
std::string FolderNameOf(const std::string& filePath) {
  const auto fileStart = filePath.rfind('\\');
  if (fileStart == std::string::npos) return filePath;
  const std::string folder = filePath.substr(0, fileStart);
  const auto nameStart = folder.rfind('\\');
  return nameStart == std::string::npos ? folder : folder.substr(nameStart + 1);
}

// A text of the last session, if there is one.
void TakeText(const RegistryKey& key, const char* name, std::string& text) {
  std::string stored;
  if (key.ReadString(name, stored)) text = stored;
}

}  // namespace

SessionLogin::SessionLogin(const PartServices& partServices, CadSession& cadSession,
                           IpcLibrary& ipcLibrary, ViewKeyMapping& mapping)
    : services(partServices), session(cadSession), ipc(ipcLibrary), viewKeys(mapping) {}

int SessionLogin::LoginCad(const LoginRequest& request, int* status) {
  StoreCaller(request);
  if (!session.groupManager && !session.optimizer) LoadFileNameSettings();
  if (!session.groupManager) WriteLastLoggedApp();
  TakeConventions(request);
  if (services.driver.IsBound()) return 1;

  if (!services.driver.Bind(platform::FindLoadedModule(session.cadModuleName))) return 0;
  if (!session.groupManager) RunCompanionProgram();
  if (status != nullptr) *status = 1;
  session.loggedOut = false;
  if (services.host.Connect(false) != 0) services.host.SendShowFlag(session.showFlag);
  if (!session.groupManager) {
    ipc.LoginToCom(1, services.paths.Self(), kModuleFile, 0, &session.ipcLoginResult);
  }
  services.converter = std::make_unique<ProtocolConverter>(
      session.settingsName, services.paths.ModuleFolder() + "\\ProtConv.ini", viewKeys);
  // A call from inside one of the waits may have taken the driver away again.
  return services.driver.IsBound() ? 1 : 0;
}

void SessionLogin::StoreCaller(const LoginRequest& request) {
  session.cadModuleName = request.cadModuleName;
  session.modelDirName = request.modelDirName;
  session.modelExt = request.modelExt;
  session.featureExt = request.featureExt;
  session.settingsName = request.settingsName;
  session.modelFileKind = request.modelFileKind;
  session.groupManager = platform::EqualsNoCase(request.cadModuleName, kGroupManagerProgram) &&
                         request.modelFileKind != kGroupManagerWithoutCad;
  session.optimizer = platform::EqualsNoCase(request.cadModuleName, kOptimizerProgram);
}

void SessionLogin::LoadFileNameSettings() {
  services.fileNames.Load(GetModuleRegistryKey(true) + session.settingsName + "\\",
                          services.paths.GetSuiteFolder() + "\\Hexaplan.ini");
}

void SessionLogin::WriteLastLoggedApp() {
  const std::string path = platform::ModulePath(platform::FindLoadedModule(session.cadModuleName));
  RegistryKey key;
  if (!OpenOrCreate(key, GetModuleRegistryKey(false))) return;
  key.WriteString("LastLoggedApp", FolderNameOf(path));
}

// The group manager works with the conventions of the last CAD session, every other caller leaves
// its own behind.
void SessionLogin::TakeConventions(const LoginRequest& request) {
  session.showFlag = request.showFlag;
  RegistryKey key;
  if (session.groupManager) {
    if (!key.Open(Hive::CurrentUser, SessionKey())) return;
    std::uint32_t showFlag = 0;
    if (key.ReadDword("LastLoggedShowFlag", showFlag))
      session.showFlag = static_cast<int>(showFlag);
    TakeText(key, "LastLoggedModelExt", session.modelExt);
    TakeText(key, "LastLoggedFeatureExtension", session.featureExt);
    TakeText(key, "LastLoggedModelDirName", session.modelDirName);
    return;
  }
  if (!OpenOrCreate(key, SessionKey())) return;
  key.WriteDword("LastLoggedShowFlag", static_cast<std::uint32_t>(request.showFlag));
  key.WriteString("LastLoggedModelExt", request.modelExt);
  key.WriteString("LastLoggedFeatureExtension", request.featureExt);
  key.WriteString("LastLoggedModelDirName", request.modelDirName);
}

// Exports may be called again while this waits: messages are dispatched. The driver is bound by
// then, so that a login from inside the wait changes nothing.
void SessionLogin::RunCompanionProgram() {
  std::uint32_t suppressed = 0;
  RegistryKey::ReadDwordUserThenMachine(GetModuleRegistryKey(true) + "Salvora", "SALVORA",
                                        suppressed);
  if (suppressed == 1) return;
  const std::string folder = services.paths.GetSuiteFolder() + "\\Salvora";
  const std::string program = folder + "\\Salvora.exe";
  auto process = platform::StartProgram({.program = program,
                                         .commandLine = program,
                                         .folder = folder,
                                         .show = platform::ShowMode::Normal});
  if (process && process->WaitUntilIdle()) process->WaitUntilEndedPumpingMessages();
}

int SessionLogin::LogoutCad() {
  EndHost();
  session.loggedOut = true;
  return 1;
}

void SessionLogin::EndHost() {
  services.host.SetClosing();
  if (services.host.Connect(false) == 0) return;
  const std::string path = services.options.Key() + "\\Quillmar";
  RegistryKey key;
  std::uint32_t endHost = 0;
  if (key.Open(Hive::CurrentUser, path)) endHost = key.ReadDword("EndUTOnExit");
  if (endHost == 0 && key.Open(Hive::LocalMachine, path)) endHost = key.ReadDword("EndUTOnExit");
  services.host.RequestExit((endHost & 0xFFFF) != 0);
}

}  // namespace quillmar
