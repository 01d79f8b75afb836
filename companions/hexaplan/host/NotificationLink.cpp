#include "hexaplan/host/NotificationLink.h"

#include "quillmar/CalculationHost.h"
#include "quillmar/Ipc.h"

namespace hexaplan {

namespace {

namespace platform = quillmar::platform;

using LoginFunction = int(QM_CDECL*)(int, QmModule, const char*, int, int*);
using SubscribeFunction = int (*)(TessioReceiver, void*);
using UnsubscribeFunction = int (*)(int);

constexpr int kLoginMode = 1;

template <typename Function>
Function Find(const platform::Library& library, const char* name) {
  return reinterpret_cast<Function>(platform::FindFunction(library.Get(), name));
}

}  // namespace

NotificationLink::NotificationLink(HostObject& host, QmModule program, const std::string& folder)
    : host(host), library(platform::LoadLibraryAt(folder + "\\" + QM_IPC_LIBRARY).library) {
  if (!library) return;
  int loginResult = 0;
  const auto login = Find<LoginFunction>(library, "LoginToCom");
  if (login != nullptr) login(kLoginMode, program, QM_HOST_PROGRAM, 0, &loginResult);
  const auto subscribe = Find<SubscribeFunction>(library, "Tessio_Subscribe");
  if (subscribe != nullptr) subscription = subscribe(&Receive, this);
}

NotificationLink::~NotificationLink() {
  if (!library) return;
  const auto unsubscribe = Find<UnsubscribeFunction>(library, "Tessio_Unsubscribe");
  if (unsubscribe != nullptr && subscription != 0) unsubscribe(subscription);
  if (goneDuringDelivery == nullptr) return;
  // The library is on the stack: it must not be unloaded from under its own code.
  *goneDuringDelivery = true;
  library.Release();
}

int NotificationLink::Receive(void* context, int number, int /*value*/, const char* text) {
  auto& link = *static_cast<NotificationLink*>(context);
  bool gone = false;
  bool* const outer = link.goneDuringDelivery;
  link.goneDuringDelivery = &gone;
  try {
    link.host.OnNotification(number, text != nullptr ? text : "");
  } catch (...) {
    // Nothing is thrown across the border; a notification that cannot be handled is passed by.
  }
  if (!gone) {
    link.goneDuringDelivery = outer;
  } else if (outer != nullptr) {
    *outer = true;
  }
  return 1;
}

}  // namespace hexaplan
