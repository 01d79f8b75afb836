// The commands on the object that the user selected in the CAD. Each gives 1 when the host or the
// receiver was told what to do, else 0; what they opened then leaves the store as it was.
#pragma once

#include "commands/CommandContext.h"

namespace quillmar {

// The host brings the object up to date with its calculation.
int UpdateSelected(const CommandContext& context);
// The host makes a further object from a copy of the calculation.
int CopySelected(const CommandContext& context);
// The host puts another calculation in the object's place.
int ReplaceSelected(const CommandContext& context);

// The host shows the calculation again, so that the user can change it and update the object. Of a
// bolted connection's part the calculation of the whole connection is shown. The three commands
// differ where the object is a dependent view:
int RecalculateSelected(const CommandContext& context);           // the view's own calculation
int RecalculateWithViews(const CommandContext& context);          // its source's, all views follow
int RecalculateAsIndependentPart(const CommandContext& context);  // it is no view any more

// Tells the editor of bolted connections which protocols the selected connection consists of. It
// answers later with the list of those that are to be connected again.
int HandOverBoltedConnection(const CommandContext& context);

}  // namespace quillmar
