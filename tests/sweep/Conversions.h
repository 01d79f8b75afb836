// Conversions of a protocol from the older layout to the current one, up to the mapping of view
// keys. One that fails goes on at "mass".
#pragma once

#include "Procedure.h"

namespace quillmar::test {

Procedure ConvertGear();
// With one element that has a snap ring, one support and one load.
Procedure ConvertShaft();

}  // namespace quillmar::test
