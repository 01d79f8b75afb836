#include "tessio/Notifications.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/Messages.h"

namespace quillmar::tessio {

Notifications& Notifications::Instance() {
  static Notifications notifications;
  return notifications;
}

Notifications::Notifications() {
  // Makes the platform's timers before this object, so that they outlive it at unload.
  platform::StopTimer(0);
}

Notifications::~Notifications() {
  // The timer would call code that is being unloaded.
  if (timer != 0) platform::StopTimer(timer);
}

int Notifications::Subscribe(TessioReceiver receiver, void* context) {
  if (receiver == nullptr) return 0;
  subscriptions.push_back({++lastNumber, receiver, context});
  return lastNumber;
}

bool Notifications::Unsubscribe(int subscription) {
  return std::erase_if(subscriptions, [subscription](const Subscription& one) {
           return one.number == subscription;
         }) > 0;
}

void Notifications::Deliver(const Notification& notification) {
  // A receiver may subscribe and unsubscribe others while it runs.
  const std::vector<Subscription> receivers = subscriptions;
  for (const Subscription& one : receivers) {
    const bool isStillThere =
        std::any_of(subscriptions.begin(), subscriptions.end(),
                    [&one](const Subscription& other) { return other.number == one.number; });
    if (!isStillThere) continue;
    one.receiver(one.context, notification.number, notification.value, notification.text.c_str());
  }
}

void Notifications::DeliverLater(Notification notification) {
  if (subscriptions.empty()) return;
  waiting.push_back(std::move(notification));
  if (timer == 0) {
    timer = platform::StartTimer(std::chrono::milliseconds(0),
                                 [this](std::uintptr_t) { DeliverWaiting(); });
  }
}

void Notifications::DeliverWaiting() {
  timer = 0;
  // What the receivers send comes behind, with a timer of its own.
  const std::deque<Notification> now = std::exchange(waiting, {});
  for (const Notification& notification : now) Deliver(notification);
}

}  // namespace quillmar::tessio
