#include "platform/native/Machine.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <utility>

#include "platform/native/MachineState.h"
#include "platform/native/Modules.h"

namespace quillmar::platform {
namespace {

constexpr const char* kRegistryFolder = "registry";
constexpr const char* kFirstDrive = "drive_c";

// A folder that cannot be: nothing is found below it and nothing can be written.
constexpr const char* kNowhere = "/dev/null/machine";

std::atomic<Machine*> current{nullptr};

// The machine of the image whose modules are attached.
struct AttachedMachine {
  std::mutex mutex;
  std::unique_ptr<Machine> machine;
  std::size_t modules = 0;
};

// Never destroyed: libraries call the system until the very end of the process.
AttachedMachine& Attached() {
  static AttachedMachine& attached = *new AttachedMachine;
  return attached;
}

// "<root>" of "<root>/drive_c/..."; empty when the path is of another form.
std::filesystem::path RootOf(const std::filesystem::path& hostPath) {
  std::error_code error;
  std::filesystem::path path = std::filesystem::weakly_canonical(hostPath, error);
  while (!error && path.has_relative_path()) {
    if (path.filename() == kFirstDrive) return path.parent_path();
    path = path.parent_path();
  }
  return {};
}

}  // namespace

Machine::State::State(const std::filesystem::path& root)
    : paths(root), windows(std::make_shared<WindowSystem>()) {
  auto report = [record = debugRecord](const std::string& line) { record->Add(line); };
  std::filesystem::path folder = paths.Root() / kRegistryFolder;
  currentUser =
      std::make_shared<HiveStore>(folder / "HKEY_CURRENT_USER.reg", u"HKEY_CURRENT_USER", report);
  localMachine =
      std::make_shared<HiveStore>(folder / "HKEY_LOCAL_MACHINE.reg", u"HKEY_LOCAL_MACHINE", report);
}

std::uint32_t Machine::State::ReadClock() {
  std::lock_guard guard(mutex);
  if (setClock) return (*setClock)++;
  auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

Machine::Machine(const std::filesystem::path& root) : state(std::make_unique<State>(root)) {}

Machine::~Machine() {
  Machine* self = this;
  current.compare_exchange_strong(self, nullptr);
}

Machine& Machine::Current() {
  Machine* machine = current;
  if (machine == nullptr) {
    AttachToImage(ProgramHostPath().native());
    machine = current;
  }
  if (machine == nullptr) {
    static Machine& nowhere = *new Machine(kNowhere);
    machine = &nowhere;
  }
  return *machine;
}

const std::filesystem::path& Machine::Root() const { return state->paths.Root(); }

std::filesystem::path Machine::HostPath(const std::string& windowsPath) const {
  return state->paths.ToHost(windowsPath);
}

std::string Machine::WindowsPath(const std::filesystem::path& hostPath) const {
  return state->paths.ToWindows(hostPath);
}

void Machine::SetClock(std::uint32_t milliseconds) {
  std::lock_guard guard(state->mutex);
  state->setClock = milliseconds;
}

void Machine::SetVolumeSerial(std::uint32_t serial) {
  std::lock_guard guard(state->mutex);
  state->volumeSerial = serial;
}

void Machine::SetSearchPath(std::vector<std::string> folders) {
  std::lock_guard guard(state->mutex);
  state->searchPath = std::move(folders);
}

ScriptedAnswers& Machine::Answers() { return state->answers; }
std::vector<ShownDialog>& Machine::Shown() { return state->shown; }
std::vector<std::string>& Machine::DebugLines() { return state->debugRecord->lines; }

void Machine::RegisterActiveObject(const std::string& classId,
                                   std::shared_ptr<AutomationServer> server) {
  state->automation.Register(classId, std::move(server));
}

void Machine::RevokeActiveObject(const std::string& classId) { state->automation.Revoke(classId); }

void Machine::EndServer(const std::string& classId) { state->automation.End(classId); }

void Machine::SetClassFactory(const std::string& classId,
                              std::function<std::shared_ptr<AutomationServer>()> make) {
  state->automation.SetFactory(classId, std::move(make));
}

bool Machine::IsWindowVisible(QmWindow window) const { return state->windows->IsVisible(window); }

bool Machine::ShowWindowFromOutside(QmWindow window, bool visible) {
  return state->windows->Show(window, visible);
}

bool Machine::IsCommandEnabled(QmWindow window, int command) const {
  return state->windows->IsCommandEnabled(window, command);
}

bool Machine::ChooseCommand(QmWindow window, int command) {
  return state->windows->Choose(window, command);
}

QmWindow Machine::ForegroundWindow() const { return state->windows->Foreground(); }

Machine::State& Machine::Internals() { return *state; }

MachineScope::MachineScope(Machine& machine) : before(current.exchange(&machine)) {}

MachineScope::~MachineScope() { current = before; }

bool AttachToImage(const std::string& hostPath) {
  std::filesystem::path root = RootOf(hostPath);
  AttachedMachine& attached = Attached();
  std::lock_guard guard(attached.mutex);
  if (root.empty() || (current != nullptr && current != attached.machine.get())) return false;
  bool same = attached.machine != nullptr && attached.machine->Root() == root;
  if (!same) {
    if (attached.modules > 0) return false;
    attached.machine = std::make_unique<Machine>(root);
  }
  ++attached.modules;
  current = attached.machine.get();
  return true;
}

void DetachFromImage() {
  AttachedMachine& attached = Attached();
  std::lock_guard guard(attached.mutex);
  if (attached.modules > 0) --attached.modules;
}

}  // namespace quillmar::platform
