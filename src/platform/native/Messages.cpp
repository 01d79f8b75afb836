#include "platform/Messages.h"

#include <algorithm>
#include <utility>

#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kShortestTimer = 10ms;

WindowSystem& Windows() { return *Machine::Current().Internals().windows; }

class NativeWindow : public HiddenWindow {
 public:
  explicit NativeWindow(WindowHandler& handler)
      : system(Machine::Current().Internals().windows), handle(system->Create(&handler)) {}
  ~NativeWindow() override {
    if (handle != 0) system->Destroy(handle);
  }
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;

  QmWindow Handle() const override { return handle; }
  void Show(bool visible) override { system->Show(handle, visible); }
  void EnableCommand(int command, bool enabled) override {
    system->EnableCommand(handle, command, enabled);
  }
  void Abandon() override {
    system->Silence(handle);
    handle = 0;
  }

 private:
  std::shared_ptr<WindowSystem> system;
  QmWindow handle;
};

}  // namespace

unsigned RegisterMessage(const std::string& name) { return Windows().RegisterMessage(name); }

// The machine has no pictures of windows: every template will do.
std::unique_ptr<HiddenWindow> HiddenWindow::Create(QmModule, int, WindowHandler& handler) {
  return std::make_unique<NativeWindow>(handler);
}

bool PostToWindow(QmWindow window, unsigned message) { return Windows().Post(window, message); }

void SendToWindow(QmWindow window, unsigned message) { Windows().Send(window, message); }

bool IsLiveWindow(QmWindow window) { return Windows().IsLive(window); }

void BringToForeground(QmWindow window) { Windows().BringToForeground(window); }

std::uintptr_t StartTimer(std::chrono::milliseconds delay,
                          std::function<void(std::uintptr_t)> expired) {
  if (!expired) return 0;
  TimerClock::time_point due =
      TimerClock::now() + std::max<std::chrono::milliseconds>(delay, kShortestTimer);
  return Windows().QueueOfThread()->AddTimer(due, std::move(expired));
}

void StopTimer(std::uintptr_t timer) { Windows().QueueOfThread()->RemoveTimer(timer); }

void PumpMessages() { Windows().Pump(); }

}  // namespace quillmar::platform
