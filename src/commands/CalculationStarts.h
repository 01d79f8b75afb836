// Starting or re-entering a calculation from the CAD side: a protocol is prepared and the host
// shows it. The result comes back through the callback dispatcher.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// `dataFile` is the calculation's name without folder, `standard` the standard to calculate by.
void StartCalculation(const PartServices& services, const std::string& dataFile,
                      const std::string& standard);

// A new bolted connection in the standard that was used last. False when no protocol could be made.
bool StartBoltedConnection(const PartServices& services);

// Lets the optimizer run a calculation on behalf of the group manager. False when the protocol does
// not open.
bool StartGroupOptimization(const PartServices& services, const std::string& protocolId);

// Has the bolted-connection library edit the connection that the reference text carries; `first`
// and `second` are for that library. Its result; 0 without it, or when the text cannot be opened.
int EditBoltedConnection(const PartServices& services, const std::string& reference, int first,
                         int second);

}  // namespace quillmar
