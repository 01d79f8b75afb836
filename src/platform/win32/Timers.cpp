// One-shot timers of the thread's message loop.
#include <algorithm>
#include <map>
#include <utility>

#include "platform/Messages.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

using Expired = std::function<void(std::uintptr_t)>;

// Timers that have not expired. Those left when the library is unloaded are stopped, because their
// procedure goes with it.
class TimerTable {
 public:
  ~TimerTable() {
    for (const auto& timer : expiries) KillTimer(nullptr, timer.first);
  }

  void Add(std::uintptr_t timer, Expired expired) { expiries[timer] = std::move(expired); }

  // Stops a timer and gives its function; an empty one when it is not known.
  Expired Take(std::uintptr_t timer) {
    const auto found = expiries.find(timer);
    if (found == expiries.end()) return nullptr;
    KillTimer(nullptr, timer);
    Expired expired = std::move(found->second);
    expiries.erase(found);
    return expired;
  }

 private:
  std::map<std::uintptr_t, Expired> expiries;
};

TimerTable& Timers() {
  static TimerTable table;
  return table;
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  try {
    if (const Expired expired = Timers().Take(timer)) expired(timer);
  } catch (...) {
    OutputDebugStringA("An expired timer's work ended with an exception\n");
  }
}

}  // namespace

std::uintptr_t StartTimer(std::chrono::milliseconds delay, Expired expired) {
  const auto milliseconds = std::clamp<std::int64_t>(delay.count(), 0, USER_TIMER_MAXIMUM);
  const std::uintptr_t timer = SetTimer(nullptr, 0, static_cast<UINT>(milliseconds), OnTimer);
  if (timer != 0) Timers().Add(timer, std::move(expired));
  return timer;
}

void StopTimer(std::uintptr_t timer) { Timers().Take(timer); }

}  // namespace quillmar::platform
