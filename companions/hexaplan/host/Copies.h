// Copies of protocols that the CAD side makes under identities of their own and leaves in the
// store, where the host finds them: the command that announces a copy does not name it.
#pragma once

#include <string>

#include "hexaplan/host/ProtocolStore.h"

namespace hexaplan {

// What becomes of a copy; the numbers are those of the command.
enum class CopyUse {
  Place = 1,   // a new part
  Replace = 2  // takes the place of the part that it was copied from
};

struct Copy {
  std::string id;        // empty: there is none
  std::string replaced;  // whose place it takes
};

// The newest copy for that use, made ready to be calculated. It is found only once.
Copy TakeUpCopy(const ProtocolStore& store, CopyUse use);

}  // namespace hexaplan
