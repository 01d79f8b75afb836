// The one object of the module: builds everything in order when the library is attached, and takes
// it down in reverse when it is detached.
#pragma once

#include <memory>
#include <string>

#include "calclink/CalcHost.h"
#include "commands/CallbackDispatcher.h"
#include "commands/GroupInsertTimer.h"
#include "commands/QueuedFunctions.h"
#include "commands/SessionLogin.h"
#include "parts/PartServices.h"
#include "platform/Messages.h"

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

   protected:
    void OnMessage(unsigned message) override;
    void OnShown() override;

    QuillmarApp& app;

   private:
    std::unique_ptr<platform::HiddenWindow> window;
  };

  // Also receives the host's callback and the module's queued functions.
  class CallbackWindow : public SelfHidingWindow {
   public:
    using SelfHidingWindow::SelfHidingWindow;

   protected:
    void OnMessage(unsigned message) override;
  };

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
  double axisOverlap = 0.0;
  PartServices services;
  SessionLogin login;
  CallbackDispatcher dispatcher;
  CommandState commandState;
  CommandContext commands;
  GroupInsertTimer groupInserts;
  CallbackWindow callbackWindow;
  SelfHidingWindow helperWindow;
  QueuedFunctions queue;

  unsigned callbackMessage = 0;
  unsigned callFunctionMessage = 0;
  unsigned hideMessage = 0;
};

}  // namespace quillmar
