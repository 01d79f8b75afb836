// The one object of the module: builds everything in order when the library is attached, and takes
// it down in reverse when it is detached.
#pragma once

#include <memory>
#include <string>

#include "calclink/CalcHost.h"
#include "commands/CallbackDispatcher.h"
#include "commands/GroupInsertTimer.h"
#include "commands/Measurement.h"
#include "commands/Notifications.h"
#include "commands/QueuedFunctions.h"
#include "commands/SessionLogin.h"
#include "parts/PartServices.h"
#include "platform/Messages.h"
#include "session/CadStandards.h"
#include "userparts/UserParts.h"

namespace quillmar {

class QuillmarApp {
 public:
  explicit QuillmarApp(QmModule self);
  ~QuillmarApp();
  QuillmarApp(const QuillmarApp&) = delete;
  QuillmarApp& operator=(const QuillmarApp&) = delete;

  // False when the storage or link library is missing: the module is of no use then.
  bool Start();
  // Takes everything down; asks the host to end when nobody logged out.
  void ShutDown();
  // The process ends: lets go of everything and calls nothing outside.
  void Abandon();

  const PartServices& Services() const { return services; }
  SessionLogin& Login() { return login; }
  QueuedFunctions& Queue() { return queue; }
  const CommandContext& Commands() const { return commands; }
  GroupInsertTimer& GroupInserts() { return groupInserts; }
  Measurement& Measure() { return measurement; }
  Notifications& Receiver() { return notifications; }
  CadStandards& Standards() { return standards; }

  // Shows or hides the toolbar, which is the callback window. Its commands can be chosen when the
  // session's caller allows it.
  void ShowToolbar(bool show);
  UserParts& TheUserParts() { return userParts; }

 private:
  // A window that hides itself whenever somebody shows it, and hands on the suite's messages.
  class SelfHidingWindow : public platform::WindowHandler {
   public:
    explicit SelfHidingWindow(QuillmarApp& owner) : app(owner) {}
    void Create(int dialogTemplate);
    void Destroy() { window.reset(); }
    void Abandon();
    QmWindow Handle() const { return window ? window->Handle() : 0; }
    void Post(unsigned message) const { platform::PostToWindow(Handle(), message); }
    void Show(bool visible);
    void EnableCommand(int command, bool enabled);

   protected:
    void OnMessage(unsigned message) override;
    void OnShown() override;

    QuillmarApp& app;

   private:
    std::unique_ptr<platform::HiddenWindow> window;
  };

  // Also receives the host's callback and the module's queued functions, and is the toolbar.
  class CallbackWindow : public SelfHidingWindow {
   public:
    using SelfHidingWindow::SelfHidingWindow;

   protected:
    void OnMessage(unsigned message) override;
    void OnCommand(int command) override;
  };

  struct ToolbarRow;
  static const ToolbarRow kToolbar[];

  void LoadTexts();
  void DetermineTitle();
  void CreateWindows();
  void ForgetUnloadedAddIn();
  std::optional<HostSession> DescribeSession() const;

  // In the order in which they are built; each uses only what stands above it.
  InstallationPaths paths;
  std::string title;
  LanguageTable texts;
  ErrorLog errors;
  WindowActivator activator;
  ProtocolLibraries libraries;
  ProtocolContext protocols;
  CadSession session;
  CadDriverTable driver;
  BoltedConnectionLibrary bolted;
  IpcLibrary ipc;
  CalcHost host;
  OptionsStore options;
  FileNameSettings fileNames;
  BomTags tags;
  UniqueIds ids;
  ViewKeyMapping viewKeys;
  std::unique_ptr<ProtocolConverter> converter;
  CadStandards standards;
  double axisOverlap = 0.0;
  PartServices services;
  SessionLogin login;
  CallbackDispatcher dispatcher;
  CommandState commandState;
  CommandContext commands;
  GroupInsertTimer groupInserts;
  Measurement measurement;
  Notifications notifications;
  CallbackWindow callbackWindow;
  SelfHidingWindow helperWindow;
  QueuedFunctions queue;
  UserParts userParts;

  unsigned callbackMessage = 0;
  unsigned callFunctionMessage = 0;
  unsigned hideMessage = 0;
  // Set while the module itself shows the toolbar: it must not hide itself again.
  bool keepVisible = false;
};

}  // namespace quillmar
