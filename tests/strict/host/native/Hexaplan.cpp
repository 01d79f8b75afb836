// The strict host of the native target: a program that the platform starts inside the calling
// process, and whose automation object is registered there.
#include <memory>

#include "host/HostBrain.h"
#include "platform/Messages.h"
#include "platform/native/Machine.h"
#include "quillmar/CalculationHost.h"

namespace {

using namespace quillmar;

platform::AutomationResult Answered(platform::AutomationStatus status) { return {status, {}, {}}; }

class Server : public platform::AutomationServer {
 public:
  platform::AutomationResult Call(int identifier,
                                  const platform::AutomationArguments& arguments) override {
    using Outcome = strict::HostBrain::Outcome;
    if (gone) return Answered(platform::AutomationStatus::ServerGone);
    strict::HostBrain::Reply reply = brain.Call(identifier, arguments);
    switch (reply.outcome) {
      case Outcome::Done: return {platform::AutomationStatus::Done, reply.value, {}};
      case Outcome::Raised:
        return {platform::AutomationStatus::Raised, {}, reply.description};
      case Outcome::UnknownMember: return Answered(platform::AutomationStatus::UnknownMember);
      case Outcome::Failed: break;
      case Outcome::Dies:
      case Outcome::Ends:
        gone = true;
        platform::Machine::Current().RevokeActiveObject(QM_HOST_CLASS_ID);
        return Answered(reply.outcome == Outcome::Ends ? platform::AutomationStatus::Done
                                                       : platform::AutomationStatus::ServerGone);
    }
    return Answered(platform::AutomationStatus::Failed);
  }

  std::optional<int> FindMember(const std::string& name) override {
    return gone ? std::nullopt : brain.FindMember(name);
  }

 private:
  strict::HostBrain brain{[](std::uint32_t window) {
    return platform::PostToWindow(window, platform::RegisterMessage(QM_MESSAGE_CALLBACK));
  }};
  bool gone = false;
};

}  // namespace

QM_EXTERN_C QM_EXPORT int QmProgramStart(const char*) {
  platform::Machine::Current().RegisterActiveObject(QM_HOST_CLASS_ID, std::make_shared<Server>());
  return 1;
}
