// The client of the calculation host's automation object: attaches to a running host or starts
// one, tells it about the session, calls its methods, asks it to end.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/InstallationPaths.h"
#include "calclink/IpcLibrary.h"
#include "platform/Automation.h"
#include "protocol/VXProtocol.h"
#include "quillmar/CalculationHost.h"

namespace quillmar {

// What the host is told about the session after each connection.
struct HostSession {
  int mode = 0;
  std::string callbackWindow;  // decimal window handle
  std::string modelFolder;     // both empty when the session has no model folder
  std::string extensions;      // part extension, or "part,feature" when they differ
  std::string settingsName;
  int showFlag = 0;
  int smartFlag = 0;
  QmWindow cadWindow = 0;
};

class CalcHost {
 public:
  struct Collaborators {
    const InstallationPaths& paths;
    const ProtocolContext& protocols;
    const IpcLibrary& ipc;
    // Nothing when this session sends no data.
    std::function<std::optional<HostSession>()> session;
    std::function<void(const std::string&)> showError;
  };

  explicit CalcHost(Collaborators collaborators);
  virtual ~CalcHost() = default;

  void SetProgId(std::string id) { progId = std::move(id); }
  // From now on no host is started; an attached one is still used.
  void SetClosing() { closing = true; }

  // 1 when a host is attached afterwards, or while a connection is being made further up. The
  // session is sent at every successful connect.
  int Connect(bool startIfNeeded);
  virtual int StartHost();
  // Waits up to 11 seconds until the host is ready and sends it the session.
  virtual int OnConnected();
  virtual bool IsAttached() const { return dispatch != nullptr; }

  // Method calls. Each connects first, starting the host when needed; 0 or an empty text when the
  // call could not be made. An error that the host raises is shown to the user.
  int CallInt(int method, const platform::AutomationArguments& arguments);
  std::string CallText(int method, const platform::AutomationArguments& arguments);
  // For methods without a result: true when the host was reached and took the call.
  bool CallNone(int method, const platform::AutomationArguments& arguments);
  // The same for methods that a host may lack: skipped when it does not know the name.
  int CallIntIfOffered(TextRef name, int method, const platform::AutomationArguments& arguments);

  // Closes the protocol in the store, so that the host can open it, and shows its calculation.
  int ShowCalculation(const std::string& protocolId);
  // Folder of the suite's companion programs, without trailing backslash: what the host answers,
  // without a host the suite's folder.
  std::string CompanionFolder();
  // Tells the host that the protocol changed.
  int AnnounceProtocol(const std::string& protocolId);
  // Asks the host to write the file that the protocol names; `fileType` is the kind of drawing
  // files that the CAD asked for. True when it was written.
  bool WriteFile(const std::string& protocolId, int fileType);
  // Tells an attached host which toolbar commands are shown; does not connect.
  int SendShowFlag(int showFlag);
  // Sends the exit request; `endHost` asks the host to end, else only the session ends.
  void RequestExit(bool endHost);

  // Lets go of the host's object without releasing it.
  void Detach();

 private:
  platform::AutomationResult Invoke(int method, const platform::AutomationArguments& arguments,
                                    platform::AutomationType type);
  platform::AutomationResult InvokeIfOffered(TextRef name, int method,
                                             const platform::AutomationArguments& arguments,
                                             platform::AutomationType type);
  platform::AutomationResult CallAttached(int method,
                                          const platform::AutomationArguments& arguments,
                                          platform::AutomationType type);
  // The same, and an error that the host raises is shown.
  platform::AutomationResult CallAndShow(int method, const platform::AutomationArguments& arguments,
                                         platform::AutomationType type);
  void AttachToRunningHost();
  void CreateHost();
  bool WaitUntilReady();
  void SendSession(const HostSession& session);

  Collaborators with;
  std::shared_ptr<platform::AutomationObject> dispatch;
  std::string progId;
  bool closing = false;
  bool connecting = false;
};

}  // namespace quillmar
