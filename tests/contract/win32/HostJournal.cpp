#include "HostJournal.h"

#include <windows.h>

#include <string>

#include "CoreLink.h"
#include "host/HostBrain.h"

namespace quillmar::contract {
namespace {

constexpr const char* kClass = "HostJournal";

LRESULT CALLBACK Enter(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message != strict::kHostAsksMessage) return DefWindowProcA(window, message, first, second);
  const auto& core = strict::Core();
  return core.Strict_CallRefused(core.Strict_BeginCall(("host " + std::to_string(first)).c_str()));
}

HWND MakeWindow() {
  WNDCLASSA windowClass = {};
  windowClass.lpfnWndProc = &Enter;
  windowClass.lpszClassName = kClass;
  RegisterClassA(&windowClass);  // once for the process
  return CreateWindowA(kClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

}  // namespace

struct HostJournal::Backend {
  HostSide host;
  HWND window;
};

HostJournal::HostJournal(const HostSide& host)
    : backend(std::make_unique<Backend>(Backend{host, MakeWindow()})) {
  const auto number = reinterpret_cast<std::uintptr_t>(backend->window);
  backend->host.SetJournal(static_cast<std::uint32_t>(number));
}

HostJournal::~HostJournal() {
  backend->host.SetJournal(0);
  DestroyWindow(backend->window);
}

}  // namespace quillmar::contract
