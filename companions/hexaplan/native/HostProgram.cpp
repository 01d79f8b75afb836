// Hexaplan.exe on the native target: a shared object that the machine's process start loads into
// the calling process. The host then stands in the machine's table of active objects.
#include <memory>

#include "hexaplan/host/HostObject.h"
#include "platform/Modules.h"
#include "platform/native/Machine.h"
#include "quillmar/CalculationHost.h"

namespace {

using namespace quillmar::platform;

std::string FolderOfProgram() {
  const std::string path = ModulePath(FindLoadedModule(QM_HOST_PROGRAM));
  return path.substr(0, path.find_last_of('\\'));
}

class RunningHost final : public AutomationServer,
                          public std::enable_shared_from_this<RunningHost> {
 public:
  explicit RunningHost(Machine& machine) : machine(machine) {}

  bool Start() {
    const std::string folder = FolderOfProgram();
    if (!store.Load(folder)) return false;
    const auto gone = [this] { Leave(); };
    host = std::make_unique<hexaplan::HostObject>(folder, store, hexaplan::HostProcess{gone, gone});
    machine.RegisterActiveObject(QM_HOST_CLASS_ID, shared_from_this());
    return true;
  }

  AutomationResult Call(int identifier, const AutomationArguments& arguments) override {
    if (left) return {AutomationStatus::ServerGone, {}, {}};
    const auto self = shared_from_this();  // the machine may let go during the call
    return host->Call(identifier, arguments);
  }

  std::optional<int> FindMember(const std::string& name) override {
    return left ? std::nullopt : host->FindMember(name);
  }

 private:
  void Leave() {
    left = true;
    machine.RevokeActiveObject(QM_HOST_CLASS_ID);
  }

  Machine& machine;
  hexaplan::ProtocolStore store;
  std::unique_ptr<hexaplan::HostObject> host;
  bool left = false;
};

}  // namespace

// Named as kInProcessProgramStart says.
extern "C" QM_EXPORT int QmProgramStart(const char* /*commandLine*/) {
  try {
    return std::make_shared<RunningHost>(Machine::Current())->Start() ? 1 : 0;
  } catch (...) {
    return 0;
  }
}
