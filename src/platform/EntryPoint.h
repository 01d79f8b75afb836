// What the platform's library entry point calls. Defined by the exports of the module; the entry
// point itself is compiled into the library, not into the platform.
#pragma once

#include "quillmar/Conventions.h"

namespace quillmar {

// The library was loaded; `self` is its handle. False refuses the load: then everything has been
// undone already, and OnLibraryDetach is not called.
bool OnLibraryAttach(QmModule self);

// The library is being unloaded, or, with `processEnding`, the whole process ends: then other
// libraries may be gone already and nothing outside may be called.
void OnLibraryDetach(bool processEnding);

}  // namespace quillmar
