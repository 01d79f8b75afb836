// Hexaplan.exe on the native target: a shared object that the machine's process start loads into
// the calling process. The host then stands in the machine's table of active objects.
#include <dlfcn.h>

#include <memory>

#include "hexaplan/host/HostObject.h"
#include "hexaplan/host/NotificationLink.h"
#include "platform/native/Machine.h"
#include "quillmar/CalculationHost.h"

namespace {

using namespace quillmar::platform;

// The folder of this very file: a process may hold the programs of several machines.
std::string FolderOfProgram(const Machine& machine) {
  static const int inThisFile = 0;
  Dl_info file{};
  if (dladdr(&inThisFile, &file) == 0) return {};
  const std::string path = machine.WindowsPath(file.dli_fname);
  return path.substr(0, path.find_last_of('\\'));
}

class RunningHost final : public AutomationServer,
                          public std::enable_shared_from_this<RunningHost> {
 public:
  explicit RunningHost(Machine& machine) : machine(machine) {}

  bool Start() {
    const std::string folder = FolderOfProgram(machine);
    if (!store.Load(folder)) return false;
    const auto gone = [this] { machine.EndServer(QM_HOST_CLASS_ID); };
    host = std::make_unique<hexaplan::HostObject>(folder, store, hexaplan::HostProcess{gone, gone});
    notifications = std::make_unique<hexaplan::NotificationLink>(*host, nullptr, folder);
    machine.RegisterActiveObject(QM_HOST_CLASS_ID, shared_from_this());
    return true;
  }

  AutomationResult Call(int identifier, const AutomationArguments& arguments) override {
    const auto self = shared_from_this();  // the machine may let go during the call
    return host->Call(identifier, arguments);
  }

  std::optional<int> FindMember(const std::string& name) override { return host->FindMember(name); }

 private:
  Machine& machine;
  hexaplan::ProtocolStore store;
  std::unique_ptr<hexaplan::HostObject> host;
  std::unique_ptr<hexaplan::NotificationLink> notifications;
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
