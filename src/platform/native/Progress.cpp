#include "platform/Progress.h"

#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

// Shown as one dialog whose text is the newest one.
class RecordedWindow : public ProgressWindow {
 public:
  explicit RecordedWindow(const std::string& title) {
    Machine::State& machine = Machine::Current().Internals();
    std::lock_guard guard(machine.mutex);
    machine.shown.push_back({kProgress, title, {}});
  }

  void ShowText(const std::string& text) override {
    Machine::State& machine = Machine::Current().Internals();
    std::lock_guard guard(machine.mutex);
    auto window = machine.shown.rbegin();
    while (window != machine.shown.rend() && window->kind != kProgress) ++window;
    if (window != machine.shown.rend()) window->text = text;
  }

 private:
  static constexpr const char* kProgress = "progress";
};

}  // namespace

std::unique_ptr<ProgressWindow> ProgressWindow::Create(QmWindow, const std::string& title) {
  return std::make_unique<RecordedWindow>(title);
}

}  // namespace quillmar::platform
