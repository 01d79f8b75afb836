// The library entry point of the native target: what the loader runs when the module is loaded
// and unloaded. Constructors run in the order in which the linker met them, and this one needs all
// others behind it: the build links this file as the last one.
#include "platform/EntryPoint.h"

#include <cstdlib>

#include "platform/native/AttachRefused.h"
#include "platform/native/Machine.h"
#include "platform/native/Modules.h"

namespace {

using quillmar::platform::HostPathOf;
using quillmar::platform::ModuleAt;

bool attached = false;
bool inImage = false;

void LeaveImage() {
  if (inImage) quillmar::platform::DetachFromImage();
}

// Nothing may be thrown into the loader.
bool Attach() {
  try {
    return quillmar::OnLibraryAttach(ModuleAt(&attached));
  } catch (...) {
    return false;
  }
}

void Detach(bool processEnding) {
  if (!attached) return;
  attached = false;
  try {
    quillmar::OnLibraryDetach(processEnding);
  } catch (...) {
    // Nobody is left who could be told.
  }
  if (!processEnding) LeaveImage();
}

// At the end of the process this runs before the module's static objects are destroyed. When the
// module is unloaded the loader runs it, too, but after OnUnload.
void OnProcessEnd() { Detach(true); }

__attribute__((constructor)) void OnLoad() {
  inImage = quillmar::platform::AttachToImage(HostPathOf(ModuleAt(&attached)).native());
  attached = Attach();
  if (attached) {
    std::atexit(OnProcessEnd);
  } else {
    LeaveImage();
  }
}

__attribute__((destructor)) void OnUnload() { Detach(false); }

}  // namespace

namespace quillmar::platform {

bool AttachRefused() { return !attached; }

}  // namespace quillmar::platform
