// Data of the CAD on their way to the data wizard, the suite's program "Datrova.exe".
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// What the CAD passes on with the request; only the wizard knows what the numbers mean.
struct WizardRequest {
  int first = 0;
  int second = 0;
  int third = 0;
};

// Asks the CAD for the data that the user chose there and starts the wizard on them. A CAD that has
// no data lets the wizard start without; one that fails to deliver what it announced is told that
// the wizard's work is over.
//
// The wizard finds everything in section "DataWizard" of a new protocol, whose identifier it gets
// on its command line ("/C <identifier>"):
//   "First", "Second", "Third"  the three numbers of the request
//   "Data", "Source"            the CAD's two texts; missing when it had no data
// The protocol then belongs to the wizard. When the wizard cannot be started it is erased again.
void DoWizardOperation(const PartServices& services, const WizardRequest& request);

}  // namespace quillmar
