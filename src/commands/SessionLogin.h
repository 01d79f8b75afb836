// How a CAD session begins and ends.
#pragma once

#include <string>

#include "calclink/IpcLibrary.h"
#include "conversion/ViewKeyMapping.h"
#include "parts/PartServices.h"

namespace quillmar {

// What the caller of LoginCad says about itself.
struct LoginRequest {
  std::string cadModuleName;
  int showFlag = 0;
  int modelFileKind = 0;
  std::string modelDirName;
  std::string modelExt;
  std::string featureExt;
  std::string settingsName;
};

class SessionLogin {
 public:
  SessionLogin(const PartServices& services, CadSession& session, IpcLibrary& ipc,
               ViewKeyMapping& viewKeys);

  // 1 when the session is usable; `status` then receives 1 if this login bound the driver.
  int LoginCad(const LoginRequest& request, int* status);
  int LogoutCad();
  // Asks a connected host to end, as the user's option says. No host is started from then on.
  void EndHost();

 private:
  void StoreCaller(const LoginRequest& request);
  void LoadFileNameSettings();
  void WriteLastLoggedApp();
  void TakeConventions(const LoginRequest& request);
  void RunCompanionProgram();

  const PartServices& services;
  CadSession& session;
  IpcLibrary& ipc;
  ViewKeyMapping& viewKeys;
};

}  // namespace quillmar
