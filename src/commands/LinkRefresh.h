// Bringing all linked parts of the model up to date.
#pragma once

#include "commands/CommandContext.h"

namespace quillmar {

// Updates every CAD object whose protocol takes part in a link from its protocol, and lets the host
// show the group of the active assembly. 1 when the host was asked to, else 0.
int RefreshAllLinks(const CommandContext& context);

}  // namespace quillmar
