// Bringing the CAD's window to the front when a calculation hands its result over.
#pragma once

#include "base/WindowActivator.h"
#include "parts/PartServices.h"

namespace quillmar {

// Nothing happens during an optimisation, whose many results would keep stealing the focus.
void BringCadToFront(const PartServices& services);

// For a question to the user in the CAD: also during an optimisation.
void ActivateCad(const PartServices& services);

}  // namespace quillmar
