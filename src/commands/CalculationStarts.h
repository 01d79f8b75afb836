// Starting a calculation: a protocol is prepared and the host shows it. The result comes back
// through the callback dispatcher.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// `dataFile` is the calculation's name without folder, `standard` the standard to calculate by.
void StartCalculation(const PartServices& services, const std::string& dataFile,
                      const std::string& standard);

}  // namespace quillmar
