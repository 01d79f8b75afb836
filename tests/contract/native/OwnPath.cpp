#include "Machine.h"
#include "platform/System.h"
#include "platform/native/Machine.h"

namespace quillmar::contract {

const bool kClockCanBeSet = true;
const bool kHostIsAProcess = false;

std::filesystem::path OwnPath(const std::string& windowsPath) {
  return platform::Machine::Current().HostPath(windowsPath);
}

void EndWait() {
  constexpr std::uint32_t kLongerThanAnyWait = 60000;
  platform::Machine::Current().SetClock(platform::TickCount() + kLongerThanAnyWait);
}

}  // namespace quillmar::contract
