// Bill-of-materials texts that the CAD stores with a part.
#pragma once

#include "bom/ExtDataPairs.h"
#include "parts/PartServices.h"

namespace quillmar {

// One pair for each tag of the user's options, filled from the protocol.
ExtDataPairs BuildExtendedData(const PartServices& services, VXProtocol& protocol);

}  // namespace quillmar
