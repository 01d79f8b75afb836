#include "platform/native/WindowSystem.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/System.h"

namespace quillmar::platform {
namespace {

// Registered messages have the numbers 0xC000 to 0xFFFF.
constexpr unsigned kFirstRegistered = 0xC000;
constexpr unsigned kRegisteredCount = 0x4000;
constexpr std::size_t kLongestName = 255;
constexpr QmWindow kWindowStep = 2;

// Set when the thread's identity is gone. Plain data, so that it can be read to the very end: on
// the main thread the destructors of libraries run after those of thread-local objects.
thread_local bool threadEnded = false;

// Tells every machine in which this thread has a queue that the thread has ended.
class ThreadIdentity {
 public:
  ThreadIdentity() : number(++lastNumber) {}
  ~ThreadIdentity() {
    for (const auto& entry : systems) {
      if (std::shared_ptr<WindowSystem> system = entry.lock()) system->EndThread(number);
    }
    threadEnded = true;
  }
  ThreadIdentity(const ThreadIdentity&) = delete;
  ThreadIdentity& operator=(const ThreadIdentity&) = delete;

  std::uint64_t Number() const { return number; }
  void Remember(std::weak_ptr<WindowSystem> system) { systems.push_back(std::move(system)); }

 private:
  static std::atomic<std::uint64_t> lastNumber;
  std::uint64_t number;
  std::vector<std::weak_ptr<WindowSystem>> systems;
};

std::atomic<std::uint64_t> ThreadIdentity::lastNumber{0};

ThreadIdentity& ThisThread() {
  thread_local ThreadIdentity identity;
  return identity;
}

// The same in every process.
unsigned HashOf(const std::string& name) {
  std::uint32_t hash = 2166136261U;
  for (char character : name) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
  }
  return hash;
}

}  // namespace

bool MessageQueue::Post(PostedMessage message) {
  std::lock_guard guard(mutex);
  if (closed) return false;
  messages.push_back(message);
  changed.notify_all();
  return true;
}

std::uintptr_t MessageQueue::AddTimer(TimerClock::time_point due,
                                      std::function<void(std::uintptr_t)> expired) {
  std::lock_guard guard(mutex);
  timers.push_back({++lastTimer, due, std::move(expired)});
  return lastTimer;
}

void MessageQueue::RemoveTimer(std::uintptr_t timer) {
  std::lock_guard guard(mutex);
  timers.erase(std::remove_if(timers.begin(), timers.end(),
                              [&](const Timer& entry) { return entry.id == timer; }),
               timers.end());
}

std::vector<MessageQueue::Timer>::iterator MessageQueue::NextTimer() {
  return std::min_element(timers.begin(), timers.end(),
                          [](const Timer& a, const Timer& b) { return a.due < b.due; });
}

std::optional<QueueEntry> MessageQueue::Take() {
  std::lock_guard guard(mutex);
  if (!messages.empty()) {
    QueueEntry entry{messages.front(), 0, {}};
    messages.pop_front();
    return entry;
  }
  auto timer = NextTimer();
  if (timer == timers.end() || timer->due > TimerClock::now()) return std::nullopt;
  QueueEntry entry{{}, timer->id, std::move(timer->expired)};
  timers.erase(timer);
  return entry;
}

void MessageQueue::WaitForInput(const std::function<bool()>& stop) {
  std::unique_lock lock(mutex);
  while (!stop() && messages.empty()) {
    auto timer = NextTimer();
    if (timer == timers.end()) {
      changed.wait(lock);
    } else if (timer->due <= TimerClock::now()) {
      return;
    } else {
      TimerClock::time_point due = timer->due;
      changed.wait_until(lock, due);
    }
  }
}

void MessageQueue::Wake() {
  std::lock_guard guard(mutex);
  changed.notify_all();
}

void MessageQueue::Close() {
  std::lock_guard guard(mutex);
  closed = true;
  messages.clear();
  timers.clear();
}

QmWindow WindowSystem::Create(WindowHandler* handler) {
  std::shared_ptr<MessageQueue> queue = QueueOfThread();
  std::lock_guard guard(mutex);
  lastWindow += kWindowStep;
  windows[lastWindow] = {handler, std::move(queue), ThisThread().Number(), false, {}};
  return lastWindow;
}

void WindowSystem::Destroy(QmWindow window) {
  std::lock_guard guard(mutex);
  windows.erase(window);
  if (foreground == window) foreground = 0;
}

void WindowSystem::Silence(QmWindow window) {
  std::lock_guard guard(mutex);
  auto found = windows.find(window);
  if (found != windows.end()) found->second.handler = nullptr;
}

bool WindowSystem::IsLive(QmWindow window) const {
  std::lock_guard guard(mutex);
  return windows.count(window) > 0;
}

bool WindowSystem::IsVisible(QmWindow window) const {
  std::lock_guard guard(mutex);
  auto found = windows.find(window);
  return found != windows.end() && found->second.visible;
}

bool WindowSystem::Show(QmWindow window, bool visible) {
  WindowHandler* told = nullptr;
  {
    std::lock_guard guard(mutex);
    auto found = windows.find(window);
    if (found == windows.end()) return false;
    if (visible && !found->second.visible) told = found->second.handler;
    found->second.visible = visible;
  }
  if (told != nullptr) told->OnShown();
  return true;
}

void WindowSystem::EnableCommand(QmWindow window, int command, bool enabled) {
  std::lock_guard guard(mutex);
  auto found = windows.find(window);
  if (found == windows.end()) return;
  if (enabled) {
    found->second.disabledCommands.erase(command);
  } else {
    found->second.disabledCommands.insert(command);
  }
}

bool WindowSystem::IsCommandEnabled(QmWindow window, int command) const {
  std::lock_guard guard(mutex);
  auto found = windows.find(window);
  return found != windows.end() && found->second.disabledCommands.count(command) == 0;
}

bool WindowSystem::Choose(QmWindow window, int command) {
  WindowHandler* handler = HandlerOf(window);
  if (handler == nullptr || !IsVisible(window) || !IsCommandEnabled(window, command)) return false;
  handler->OnCommand(command);
  return true;
}

void WindowSystem::Send(QmWindow window, unsigned message) {
  if (WindowHandler* handler = HandlerOf(window)) handler->OnMessage(message);
}

bool WindowSystem::Post(QmWindow window, unsigned message) {
  std::lock_guard guard(mutex);
  auto found = windows.find(window);
  return found != windows.end() && found->second.queue->Post({window, message});
}

void WindowSystem::BringToForeground(QmWindow window) {
  std::lock_guard guard(mutex);
  if (windows.count(window) > 0) foreground = window;
}

QmWindow WindowSystem::Foreground() const {
  std::lock_guard guard(mutex);
  return foreground;
}

unsigned WindowSystem::RegisterMessage(const std::string& name) {
  if (name.empty() || name.size() > kLongestName) return 0;
  std::string key = LowerCase(name);
  std::lock_guard guard(mutex);
  auto known = registered.find(key);
  if (known != registered.end()) return known->second;
  if (registered.size() == kRegisteredCount) return 0;
  auto taken = [&](unsigned number) {
    return std::any_of(registered.begin(), registered.end(),
                       [&](const auto& entry) { return entry.second == number; });
  };
  unsigned slot = HashOf(key) % kRegisteredCount;
  while (taken(kFirstRegistered + slot)) slot = (slot + 1) % kRegisteredCount;
  return registered[key] = kFirstRegistered + slot;
}

std::shared_ptr<MessageQueue> WindowSystem::QueueOfThread() {
  // A thread that is as good as gone gets a queue that nobody reads.
  if (threadEnded) return std::make_shared<MessageQueue>();
  ThreadIdentity& thread = ThisThread();
  std::lock_guard guard(mutex);
  std::shared_ptr<MessageQueue>& queue = queues[thread.Number()];
  if (queue == nullptr) {
    queue = std::make_shared<MessageQueue>();
    thread.Remember(weak_from_this());
  }
  return queue;
}

void WindowSystem::Pump() {
  std::shared_ptr<MessageQueue> queue = QueueOfThread();
  while (std::optional<QueueEntry> entry = queue->Take()) {
    if (entry->timer != 0) {
      entry->expired(entry->timer);
    } else if (WindowHandler* handler = HandlerOf(entry->posted.window)) {
      handler->OnMessage(entry->posted.message);
    }
  }
}

void WindowSystem::EndThread(std::uint64_t thread) {
  std::lock_guard guard(mutex);
  auto queue = queues.find(thread);
  if (queue == queues.end()) return;
  queue->second->Close();
  queues.erase(queue);
  for (auto window = windows.begin(); window != windows.end();) {
    window = window->second.thread == thread ? windows.erase(window) : std::next(window);
  }
}

WindowHandler* WindowSystem::HandlerOf(QmWindow window) const {
  std::lock_guard guard(mutex);
  auto found = windows.find(window);
  return found == windows.end() ? nullptr : found->second.handler;
}

}  // namespace quillmar::platform
