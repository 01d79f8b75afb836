#include "drawboard/native/occt/Solid.h"
#include "quillmar/Conventions.h"

QM_EXTERN_C QM_EXPORT drawboard::SolidLibrary* Drawboard_Solids() {
  return &drawboard::OcctSolids();
}
