// The object that the user selected in the CAD, as the commands take it up.
#pragma once

#include "commands/WorkingCopy.h"

namespace quillmar {

// Opens the selected object's protocol and registers it. False when nothing is selected, when its
// calculation is open (its window then comes to the front), or when it cannot be registered.
bool OpenSelected(const PartServices& services, WorkingCopy& copy);

// Only calculations are worked on. The copy of a user part, an assembly or a group is discarded.
bool IsForCalculation(WorkingCopy& copy);

}  // namespace quillmar
