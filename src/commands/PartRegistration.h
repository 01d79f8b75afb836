// Registration of a protocol for which the CAD holds an object.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// Writes into the open protocol what the CAD knows of its object: identity, drawn state,
// parameters, assembly path, visibility, physical properties. False when the protocol has no part
// object or the CAD does not tell its parameters.
bool RegisterCadSideProtocol(const PartServices& services, VXProtocol& protocol,
                             const std::string& identifier);

}  // namespace quillmar
