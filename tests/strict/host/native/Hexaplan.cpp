// The strict host of the native target: a program that the platform starts inside the calling
// process, and whose automation object is registered there.
#include <memory>

#include "CoreLink.h"
#include "host/HostBrain.h"
#include "platform/Messages.h"
#include "platform/native/Machine.h"
#include "quillmar/CalculationHost.h"

namespace {

using namespace quillmar;

class Server : public platform::AutomationServer {
 public:
  platform::AutomationResult Call(int identifier,
                                  const platform::AutomationArguments& arguments) override {
    using Outcome = strict::HostBrain::Outcome;
    const strict::HostBrain::Reply reply = brain.Call(identifier, arguments);
    switch (reply.outcome) {
      case Outcome::Done:
        return {platform::AutomationStatus::Done, reply.value, {}};
      case Outcome::Raised:
        return {platform::AutomationStatus::Raised, {}, reply.description};
      case Outcome::UnknownMember:
        return {platform::AutomationStatus::UnknownMember, {}, {}};
      case Outcome::Failed:
        break;
      case Outcome::Dies:
      case Outcome::Ends:
        platform::Machine::Current().EndServer(QM_HOST_CLASS_ID);
        break;
    }
    return {};
  }

  std::optional<int> FindMember(const std::string& name) override { return brain.FindMember(name); }

 private:
  // In the process of the caller the host's calls stand in the caller's journal too.
  static bool Refused(int identifier) {
    const auto& core = strict::Core();
    const int call = core.Strict_BeginCall(("host " + std::to_string(identifier)).c_str());
    return core.Strict_CallRefused(call) != 0;
  }

  strict::HostBrain brain{[](std::uint32_t window) {
                            return platform::PostToWindow(
                                window, platform::RegisterMessage(QM_MESSAGE_CALLBACK));
                          },
                          [](std::uint32_t, int identifier) { return Refused(identifier); }};
};

}  // namespace

QM_EXTERN_C QM_EXPORT int QmProgramStart(const char*) {
  platform::Machine::Current().RegisterActiveObject(QM_HOST_CLASS_ID, std::make_shared<Server>());
  return 1;
}
