// The roads of a callback, written down call by call with what each failure has to report.
#pragma once

#include "Procedure.h"

namespace quillmar::test {

// A shaft that the host reports with code 150, 160, or a code that asks for no CAD action (0).
Procedure ShaftCallback(int code);

}  // namespace quillmar::test
