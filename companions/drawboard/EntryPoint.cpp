// Load and unload of the add-in.
#include "drawboard/Driver.h"

#if defined(_WIN32)
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID processEnding) {
  if (reason == DLL_PROCESS_ATTACH) drawboard::AddinAttached(self);
  if (reason == DLL_PROCESS_DETACH) drawboard::AddinDetached(processEnding != nullptr);
  return TRUE;
}
#else
#include <dlfcn.h>

#include "platform/native/Machine.h"

namespace {

// Unloading needs no counterpart: what the add-in holds goes with the library's other objects.
__attribute__((constructor)) void Attach() {
  Dl_info self{};
  if (dladdr(reinterpret_cast<void*>(&Attach), &self) == 0) return;
  quillmar::platform::AttachToImage(self.dli_fname);
  void* handle = dlopen(self.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
  drawboard::AddinAttached(handle);
  // The handle is only noted: a reference kept here would keep the library loaded.
  if (handle != nullptr) dlclose(handle);
}

}  // namespace
#endif
