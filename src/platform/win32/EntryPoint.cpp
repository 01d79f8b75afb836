// The entry point that the system calls in the library. Compiled into the library alone.
#include "platform/EntryPoint.h"

#include "platform/win32/SpareWorker.h"
#include "platform/win32/Win32.h"

namespace {

bool attached = false;

bool Attach(HINSTANCE self) {
  DisableThreadLibraryCalls(self);
  attached = quillmar::OnLibraryAttach(self);
  return attached;
}

// Also called after a refused attach, when there is nothing to detach.
void Detach(bool processEnding) {
  if (!attached) return;
  attached = false;
  quillmar::platform::win32::GiveWorkerBack();
  quillmar::OnLibraryDetach(processEnding);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID processEnding) {
  try {
    if (reason == DLL_PROCESS_ATTACH) return Attach(self) ? TRUE : FALSE;
    if (reason == DLL_PROCESS_DETACH) Detach(processEnding != nullptr);
    return TRUE;
  } catch (...) {
    return FALSE;
  }
}
