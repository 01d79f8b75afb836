// The wizard that imports files of other programs.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// Describes one file in a new protocol and starts the import wizard on it. Always 1.
int ImportWizard(const PartServices& services, int type, int units, const std::string& fileName);

}  // namespace quillmar
