// Hexaplan.exe on Windows: a program without a visible window that serves its object until it is
// asked to end.
#include "hexaplan/host/HostObject.h"
#include "hexaplan/host/NotificationLink.h"
#include "hexaplan/win32/HostDispatch.h"
#include "platform/Modules.h"

#include <objbase.h>

namespace {

std::string FolderOfProgram() {
  const std::string path = quillmar::platform::ModulePath(nullptr);
  return path.substr(0, path.find_last_of('\\'));
}

// The loop of messages, through which automation calls arrive too.
void Serve() {
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  if (FAILED(CoInitialize(nullptr))) return 1;
  int status = 1;
  {
    const std::string folder = FolderOfProgram();
    hexaplan::ProtocolStore store;
    if (store.Load(folder)) {
      hexaplan::HostObject host(
          folder, store,
          {[] { PostQuitMessage(0); }, [] { TerminateProcess(GetCurrentProcess(), 3); }});
      const hexaplan::NotificationLink notifications(host, GetModuleHandleA(nullptr), folder);
      const hexaplan::HostRegistration registration(host);
      if (registration.IsRegistered()) {
        Serve();
        status = 0;
      }
    }
  }
  CoUninitialize();
  return status;
}
