// Bill-of-materials fields that follow from a calculation's result.
#pragma once

#include "protocol/VXProtocol.h"

namespace quillmar {

// Copies the calculated mass and its unit into the bill-of-materials fields; a protocol without a
// mass gets empty ones.
void RefreshBomData(VXProtocol& protocol);

}  // namespace quillmar
