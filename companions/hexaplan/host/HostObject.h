// The automation object of the calculation host: what each method of CalculationHost.h does.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hexaplan/host/CalculationRun.h"
#include "hexaplan/host/GroupRun.h"
#include "hexaplan/host/HostFaults.h"
#include "platform/Automation.h"
#include "quillmar/Conventions.h"

namespace hexaplan {

// What the CAD side told the host about its session.
struct CadSession {
  int mode = 0;
  QmWindow callbackWindow = 0;
  std::string versionText;  // sent with the session, "258" and "D"
  std::string kindText;
  int showFlag = 0;
  std::string settingsName;
  std::string modelFolderName;
  std::string modelExtensions;
  int smartMode = 0;
  QmWindow cadWindow = 0;
};

// The process that the host lives in.
struct HostProcess {
  std::function<void()> end;  // the host was asked to end; may return
  std::function<void()> die;  // a fault: the process is gone in the middle of a call
};

class HostObject {
 public:
  // `folder` is the host's own, without trailing backslash.
  HostObject(const std::string& folder, const ProtocolStore& store, HostProcess process);
  ~HostObject();
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;

  // A call of a method, as the border to the module sees it.
  quillmar::platform::AutomationResult Call(
      int identifier, const quillmar::platform::AutomationArguments& arguments);
  std::optional<int> FindMember(const std::string& name) const;

  // A notification of the inter-process library; its parameters lie in the protocol it names.
  void OnNotification(int number, const std::string& protocolId);

  const CadSession& Session() const { return session; }

 private:
  struct Method;
  static const Method kMethods[];
  static const Method* FindMethod(int identifier);

  using Value = quillmar::platform::AutomationValue;
  using Arguments = quillmar::platform::AutomationArguments;

  Value ShowCalculation(const Arguments& arguments);
  Value RunCommand(const Arguments& arguments);
  Value CallbackCode(const Arguments& arguments);
  Value CallbackList(const Arguments& arguments);
  Value IsReady(const Arguments& arguments);
  Value Command(const Arguments& arguments);
  Value WriteFile(const Arguments& arguments);
  Value Session(const Arguments& arguments);
  Value ShowFlag(const Arguments& arguments);
  Value CompanionFolder(const Arguments& arguments);
  Value SettingsName(const Arguments& arguments);
  Value Announce(const Arguments& arguments);
  Value SolveOneLink(const Arguments& arguments);
  Value InitSolution(const Arguments& arguments);
  Value Drawn(const Arguments& arguments);
  Value EndSolution(const Arguments& arguments);
  Value Synchronize(const Arguments& arguments);
  Value EditLinks(const Arguments& arguments);
  Value SetCadSpecific(const Arguments& arguments);
  Value UpdateAll(const Arguments& arguments);
  Value SetSmartMode(const Arguments& arguments);
  Value SetCadWindow(const Arguments& arguments);
  Value FamilyTable(const Arguments& arguments);
  Value UpdateExtData(const Arguments& arguments);

  // One finished calculation that the callback window was told of.
  struct Finished {
    int code = 0;
    std::vector<std::string> protocols;
  };
  void Report(Finished result);

  // Runs a calculation and, when it is done, tells the callback window. 1 when it was shown.
  int Show(const std::string& protocolId, RunReason reason);
  // The CAD side was asked to convert a protocol and has answered, an empty text when it could not:
  // whatever waits for it goes on.
  void GoOnAfterConversion(const std::string& protocolId);
  // Runs it for its values alone. 1 when that worked.
  int Recalculate(const std::string& protocolId);

  void HandleExitRequests();
  // What the protocol of an exit request says; empty while it is not stored.
  std::string ExitAnswer(const std::string& protocolId) const;

  std::string folder;
  const ProtocolStore& store;
  HostProcess process;
  HostFaults faults;
  CalculationRun calculations;
  GroupRun groups;
  CadSession session;

  // What the CAD side asks for: the first result, and those that wait for their message. The first
  // one stays until the next is asked for.
  std::deque<Finished> finished;
  bool firstAnswered = false;
  std::vector<std::string> calculated;   // everything that was calculated for the CAD, once each
  std::vector<std::string> unconverted;  // shown, but in the older layout
  bool solving = false;

  struct ExitRequest {
    std::string protocolId;
    int tries;  // that are left until its protocol has to be stored
  };
  std::vector<ExitRequest> exitRequests;
  std::uintptr_t exitTimer = 0;
};

}  // namespace hexaplan
