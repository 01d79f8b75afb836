// Starting the optimizer for what is selected in the CAD.
#pragma once

#include "commands/CommandContext.h"

namespace quillmar {

// The host shows the selected calculation, or the group that the selected object stands for, ready
// to be optimized. 0 when nothing is selected that could be.
int CallOptim(const CommandContext& context);

// Writes the flags by which the calculation of the protocol is run by the optimizer, `how` tells it
// on whose behalf.
void MarkForOptimizer(VXProtocol& protocol, TextRef how);

}  // namespace quillmar
