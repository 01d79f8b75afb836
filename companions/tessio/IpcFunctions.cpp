#include "tessio/IpcFunctions.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/System.h"
#include "tessio/Notifications.h"
#include "tessio/Parameters.h"
#include "tessio/Peers.h"
#include "tessio/RemoteCalls.h"

namespace quillmar::tessio::functions {
namespace {

// What LoginToCom gives for a login that stands.
constexpr int kLoggedIn = 1;

// Programs of this process that have logged in.
std::vector<std::string>& LocalPrograms() {
  static std::vector<std::string> programs;
  return programs;
}

bool IsLocal(const std::string& program) {
  const auto& programs = LocalPrograms();
  return std::any_of(programs.begin(), programs.end(), [&program](const std::string& one) {
    return platform::EqualsNoCase(one, program);
  });
}

int Login(const char* moduleName) {
  if (moduleName == nullptr || *moduleName == '\0') return 0;
  if (!IsLocal(moduleName)) LocalPrograms().emplace_back(moduleName);
  return 1;
}

Notification MakeNotification(int number, int value, const char* text) {
  const std::string_view whole = text == nullptr ? "" : text;
  return {number, value, std::string(whole.substr(0, kLongestText))};
}

}  // namespace

int LoginToCom(int, QmModule, const char* moduleName, int, int* result) {
  if (!Login(moduleName)) return 0;
  JoinPeers(moduleName);
  if (result != nullptr) *result = kLoggedIn;
  return 1;
}

int LoginToCom2(int mode, QmModule module, const char* moduleName, int reserved, int* result, int) {
  return LoginToCom(mode, module, moduleName, reserved, result);
}

int LoginToComBasic(int, const char* moduleName) { return Login(moduleName); }

int SendModalMessage(int number, int value, const char* text) {
  const Notification notification = MakeNotification(number, value, text);
  StoreParameters(notification);
  Notifications::Instance().Deliver(notification);
  SendToPeers(notification, true);
  return 1;
}

int SendModelessMessage(int number, int value, const char* text) {
  const Notification notification = MakeNotification(number, value, text);
  StoreParameters(notification);
  Notifications::Instance().DeliverLater(notification);
  SendToPeers(notification, false);
  return 1;
}

int IsProcessRunning(const char* programName) {
  return programName != nullptr && (IsLocal(programName) || IsPeerRunning(programName));
}

int CreateCJCall(const char* functionName) { return RemoteCalls::Instance().Create(functionName); }

int AddCJCallParam(int call, int, const void* value, int size) {
  return RemoteCalls::Instance().AddParameter(call, value, size);
}

int AddCJCallParamPtr2(int call, int, void* value, int size) {
  return RemoteCalls::Instance().AddParameter(call, value, size);
}

// Without a size the value is a text.
int AddCJCallParam2(int call, int, const void* value) {
  if (value == nullptr) return 0;
  const auto length = static_cast<int>(std::strlen(static_cast<const char*>(value)));
  return RemoteCalls::Instance().AddParameter(call, value, length + 1);
}

int CallCJFunction(int, const char*, int, int, int*) { return 0; }

int GetCJCallParam(int call, int index, void* value, int size) {
  return RemoteCalls::Instance().GetParameter(call, index, value, size);
}

int Tessio_Subscribe(TessioReceiver receiver, void* context) {
  return Notifications::Instance().Subscribe(receiver, context);
}

int Tessio_Unsubscribe(int subscription) {
  return Notifications::Instance().Unsubscribe(subscription);
}

}  // namespace quillmar::tessio::functions
