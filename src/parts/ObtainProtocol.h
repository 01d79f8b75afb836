// Fetches the protocol of a CAD object into the store.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// True when the protocol that the CAD object carries was opened and marked as drawn; it is closed
// again.
bool ObtainProtocol(const PartServices& services, const std::string& partName);

}  // namespace quillmar
