// Writing the extended data of all parts again, after options or tags changed.
#pragma once

#include "parts/PartServices.h"

namespace quillmar {

// 0 when the CAD does not tell its parts; parts that fail are passed by.
int UpdateExtendedData(const PartServices& services);

}  // namespace quillmar
