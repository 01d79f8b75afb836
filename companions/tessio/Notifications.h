// Notifications inside this process: who receives them, and those that wait for the message loop.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tessio/Receivers.h"

namespace quillmar::tessio {

inline constexpr std::size_t kLongestText = 259;

struct Notification {
  int number = 0;
  int value = 0;
  std::string text;
};

class Notifications {
 public:
  static Notifications& Instance();
  ~Notifications();
  Notifications(const Notifications&) = delete;
  Notifications& operator=(const Notifications&) = delete;

  int Subscribe(TessioReceiver receiver, void* context);
  bool Unsubscribe(int subscription);

  // Returns when all receivers have handled it.
  void Deliver(const Notification& notification);
  // Delivers from the message loop of this thread.
  void DeliverLater(Notification notification);

 private:
  Notifications();

  struct Subscription {
    int number;
    TessioReceiver receiver;
    void* context;
  };

  void DeliverWaiting();

  std::vector<Subscription> subscriptions;
  std::deque<Notification> waiting;
  std::uintptr_t timer = 0;
  int lastNumber = 0;
};

}  // namespace quillmar::tessio
