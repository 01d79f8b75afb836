// The open document as input of the finite-element calculation.
#pragma once

#include "parts/PartServices.h"

namespace quillmar {

// Has the CAD draw the document into a temporary file and shows the calculation with it. 1 when the
// calculation host was told, 0 on any failure before.
int CallFem(const PartServices& services);

}  // namespace quillmar
