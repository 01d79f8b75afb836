#include "app/QuillmarApp.h"

#include <cstdio>

#include "app/resources/resource.h"
#include "base/RegistryKey.h"
#include "commands/OptionsCommands.h"
#include "platform/Dialogs.h"
#include "platform/Modules.h"
#include "platform/Profile.h"
#include "platform/System.h"

namespace quillmar {
namespace {

// Numbers of the language table.
constexpr int kOptionsTitleText = 1;
constexpr int kTitleText = 63;
constexpr int kUtTitleText = 72;

constexpr int kUtType = 1;
constexpr const char* kDefaultLanguage = "EN";

// What the host is told a session is.
constexpr int kCadMode = 2;
constexpr int kGroupManagerMode = 130;

std::string InstanceLine(QmModule self) {
  char line[64];
  std::snprintf(line, sizeof line, "Quillmar Instance Handle: %x\n",
                static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(self)));
  return line;
}

}  // namespace

QuillmarApp::QuillmarApp(QmModule self)
    : paths(self),
      protocols{libraries.Storage(), libraries.Links(), errors, activator},
      host({.paths = paths,
            .protocols = protocols,
            .ipc = ipc,
            .session = [this] { return DescribeSession(); },
            .showError =
                [this](const std::string& text) {
                  platform::ShowMessage(text, title, platform::MessageIcon::Error);
                }}),
      options({}, GetModuleRegistryKey(false)),
      services{session, driver, bolted,    host, options,   fileNames, texts,
               paths,   tags,   converter, ids,  protocols, errors,    axisOverlap},
      login(services, session, ipc, viewKeys),
      dispatcher(services),
      commands{services, ipc, commandState},
      groupInserts(commands, dispatcher),
      measurement(services, ipc),
      notifications(services, session, ipc, measurement),
      callbackWindow(*this),
      helperWindow(*this),
      queue(commands, [this] { callbackWindow.Post(callFunctionMessage); }),
      userParts(services) {}

QuillmarApp::~QuillmarApp() = default;

bool QuillmarApp::Start() {
  const std::string suiteFolder = paths.GetSuiteFolder();
  platform::DebugOutput(InstanceLine(paths.Self()));
  activator.Bind(suiteFolder);
  platform::InitializeAutomation();
  host.SetProgId(QM_HOST_PROGID);
  LoadTexts();
  DetermineTitle();
  CreateWindows();
  if (!libraries.Load(suiteFolder, title)) {
    ShutDown();
    return false;
  }
  ipc.Bind(suiteFolder, paths.GetCommonFolder());
  bolted.Bind(suiteFolder);
  options.Replace(texts.GetText(kOptionsTitleText), GetModuleRegistryKey(false));
  callbackMessage = platform::RegisterMessage(QM_MESSAGE_CALLBACK);
  callFunctionMessage = platform::RegisterMessage(QM_MESSAGE_CALL_FUNCTION);
  hideMessage = platform::RegisterMessage(QM_MESSAGE_HIDE);
  return true;
}

void QuillmarApp::LoadTexts() {
  RegistryKey key;
  std::string language;
  if (key.Open(platform::Hive::LocalMachine, GetModuleRegistryKey(false))) {
    language = key.ReadString("Language");
  }
  if (language.empty()) language = kDefaultLanguage;
  texts.Load(paths.ModuleFolder() + "\\Quillmar.lng", language);
}

void QuillmarApp::DetermineTitle() {
  const int type =
      platform::ReadProfileInt(paths.GetSuiteFolder() + "\\Hexaplan.ini", "General", "UTType", -1);
  title = texts.GetText(type == kUtType ? kUtTitleText : kTitleText);
}

void QuillmarApp::CreateWindows() {
  callbackWindow.Create(IDD_CALLBACK_WINDOW);
  helperWindow.Create(IDD_HELPER_WINDOW);
}

void QuillmarApp::ShutDown() {
  groupInserts.Stop();
  callbackWindow.Destroy();
  helperWindow.Destroy();
  ForgetUnloadedAddIn();
  if (!session.loggedOut) login.EndHost();
  host.Detach();
  converter.reset();
  measurement.Release();
  standards.Clear();
  tags.Clear();
  userParts.Unbind();
  libraries.Free();
  bolted.Unbind();
  ipc.Unbind();
  activator.Unbind();
}

// The CAD may unload its add-in before this library; nothing of it may be called then.
void QuillmarApp::ForgetUnloadedAddIn() {
  if (platform::FindLoadedModule(session.cadModuleName) != driver.addIn) driver = {};
}

void QuillmarApp::Abandon() {
  callbackWindow.Abandon();
  helperWindow.Abandon();
  host.Detach();
  userParts.Abandon();
  libraries.Abandon();
  bolted.Abandon();
  ipc.Abandon();
  activator.Abandon();
}

std::optional<HostSession> QuillmarApp::DescribeSession() const {
  if (session.optimizer) return std::nullopt;
  HostSession description;
  description.mode = session.groupManager ? kGroupManagerMode : kCadMode;
  description.callbackWindow = std::to_string(static_cast<int>(callbackWindow.Handle()));
  if (!session.modelDirName.empty()) {
    description.modelFolder = session.modelDirName;
    description.extensions = session.modelExt == session.featureExt
                                 ? session.modelExt
                                 : session.modelExt + "," + session.featureExt;
  }
  description.settingsName = session.settingsName;
  description.showFlag = session.showFlag;
  description.smartFlag = options.SmartParts() ? 0 : 1;
  description.cadWindow = MainWindow(driver);
  return description;
}

struct QuillmarApp::ToolbarRow {
  int command;
  void (*run)(QuillmarApp& app);
};

// The functions that take long are queued: the click comes from inside the window system.
const QuillmarApp::ToolbarRow QuillmarApp::kToolbar[] = {
    {ID_TOOLBAR_OPTIONS, [](QuillmarApp& app) { ShowOptionsDialog(app.services); }},
    {ID_TOOLBAR_REFRESH_LINKS, [](QuillmarApp& app) { app.queue.Queue(kRefreshAllLinks); }},
    {ID_TOOLBAR_UPDATE_DATA, [](QuillmarApp& app) { app.queue.Queue(kUpdateExtendedData); }},
};

void QuillmarApp::ShowToolbar(bool show) {
  const bool enabled = (session.showFlag & kShowToolbarCommands) != 0;
  for (const ToolbarRow& row : kToolbar) callbackWindow.EnableCommand(row.command, enabled);
  keepVisible = true;
  callbackWindow.Show(show);
  keepVisible = false;
}

// --- the hidden windows ---

void QuillmarApp::SelfHidingWindow::Create(int dialogTemplate) {
  window = platform::HiddenWindow::Create(app.paths.Self(), dialogTemplate, *this);
  if (window) app.texts.TranslateWindow(window->Handle());
}

void QuillmarApp::SelfHidingWindow::Abandon() {
  if (window) window->Abandon();
}

void QuillmarApp::SelfHidingWindow::Show(bool visible) {
  if (window) window->Show(visible);
}

void QuillmarApp::SelfHidingWindow::EnableCommand(int command, bool enabled) {
  if (window) window->EnableCommand(command, enabled);
}

void QuillmarApp::SelfHidingWindow::OnShown() {
  if (!app.keepVisible) Post(app.hideMessage);
}

void QuillmarApp::SelfHidingWindow::OnMessage(unsigned message) {
  if (message == app.hideMessage && window) window->Show(false);
}

void QuillmarApp::CallbackWindow::OnCommand(int command) {
  try {
    for (const ToolbarRow& row : kToolbar) {
      if (row.command == command) row.run(app);
    }
  } catch (...) {
    app.errors.ReportException("Toolbar", QM_HERE);
  }
}

// What the message asks for must not throw into the loop of the CAD.
void QuillmarApp::CallbackWindow::OnMessage(unsigned message) {
  try {
    if (message == app.callbackMessage) {
      app.dispatcher.OnCallback();
    } else if (message == app.callFunctionMessage) {
      app.queue.Run();
    } else {
      SelfHidingWindow::OnMessage(message);
    }
  } catch (...) {
    app.errors.ReportException("Window message", QM_HERE);
  }
}

}  // namespace quillmar
