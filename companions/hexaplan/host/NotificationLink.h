// The host's subscription to the notifications of the suite's other programs.
#pragma once

#include <string>

#include "hexaplan/host/HostObject.h"
#include "platform/Modules.h"
#include "tessio/Receivers.h"

namespace hexaplan {

class NotificationLink {
 public:
  // `program` is this program's module, `folder` where the inter-process library lies. Without
  // that library, or with one that hands nothing out, the host hears of no notification.
  NotificationLink(HostObject& host, QmModule program, const std::string& folder);
  // May happen while a notification is being handed over.
  ~NotificationLink();
  NotificationLink(const NotificationLink&) = delete;
  NotificationLink& operator=(const NotificationLink&) = delete;

 private:
  static int QM_CDECL Receive(void* context, int number, int value, const char* text);

  HostObject& host;
  quillmar::platform::Library library;
  int subscription = 0;
  bool* goneDuringDelivery = nullptr;  // set while a notification is handed over
};

}  // namespace hexaplan
