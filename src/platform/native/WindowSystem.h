// Windows and message queues of the machine. Each thread has one queue; messages wait in it for
// the thread's windows, before them nothing, behind them the thread's timers.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Messages.h"

namespace quillmar::platform {

using TimerClock = std::chrono::steady_clock;

struct PostedMessage {
  QmWindow window = 0;
  unsigned message = 0;
};

// What a thread takes out of its queue: a message, or a timer that is over.
struct QueueEntry {
  PostedMessage posted;
  std::uintptr_t timer = 0;
  std::function<void(std::uintptr_t)> expired;
};

class MessageQueue {
 public:
  // False when the thread has ended.
  bool Post(PostedMessage message);
  std::uintptr_t AddTimer(TimerClock::time_point due, std::function<void(std::uintptr_t)> expired);
  void RemoveTimer(std::uintptr_t timer);

  // The oldest message; without one the timer that was due first. A timer taken is gone.
  std::optional<QueueEntry> Take();

  // Returns when there is something to take or `stop` holds. Whoever makes it hold calls Wake.
  void WaitForInput(const std::function<bool()>& stop);
  void Wake();

  // The thread ends: nothing is taken out any more.
  void Close();

 private:
  struct Timer {
    std::uintptr_t id = 0;
    TimerClock::time_point due;
    std::function<void(std::uintptr_t)> expired;
  };

  std::vector<Timer>::iterator NextTimer();

  std::mutex mutex;
  std::condition_variable changed;
  bool closed = false;
  std::deque<PostedMessage> messages;
  std::vector<Timer> timers;
  std::uintptr_t lastTimer = 0;
};

class WindowSystem : public std::enable_shared_from_this<WindowSystem> {
 public:
  // Null handlers hear nothing. The window belongs to the calling thread.
  QmWindow Create(WindowHandler* handler);
  void Destroy(QmWindow window);
  // The window lives on without a handler.
  void Silence(QmWindow window);

  bool IsLive(QmWindow window) const;
  bool IsVisible(QmWindow window) const;
  // Tells the handler when the window becomes visible. False when it does not live.
  bool Show(QmWindow window, bool visible);
  // Commands are enabled until they are disabled.
  void EnableCommand(QmWindow window, int command, bool enabled);
  bool IsCommandEnabled(QmWindow window, int command) const;
  // Tells the handler that the user chose the command; false when he cannot.
  bool Choose(QmWindow window, int command);
  bool Post(QmWindow window, unsigned message);
  void Send(QmWindow window, unsigned message);
  void BringToForeground(QmWindow window);
  QmWindow Foreground() const;
  unsigned RegisterMessage(const std::string& name);

  std::shared_ptr<MessageQueue> QueueOfThread();
  // Takes everything out of the thread's queue and tells the handlers.
  void Pump();

  // A thread has ended, and with it its queue and windows.
  void EndThread(std::uint64_t thread);

 private:
  struct Window {
    WindowHandler* handler = nullptr;
    std::shared_ptr<MessageQueue> queue;
    std::uint64_t thread = 0;
    bool visible = false;
    std::set<int> disabledCommands;
  };

  WindowHandler* HandlerOf(QmWindow window) const;

  mutable std::mutex mutex;
  std::map<QmWindow, Window> windows;
  std::map<std::uint64_t, std::shared_ptr<MessageQueue>> queues;
  std::map<std::string, unsigned> registered;  // by name in lower case
  QmWindow lastWindow = 0x10000;
  QmWindow foreground = 0;
};

}  // namespace quillmar::platform
