// Dependent views: objects that show another object's calculation and take their values from it.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// Identifier of the protocol that the open protocol is a view of; empty when it does not say.
std::string SourceOfView(VXProtocol& protocol);

// Makes sure that the store holds that protocol: taken from the CAD, unless a calculation works
// with it just now. False when there is none or the CAD does not have it.
bool ObtainSourceOfView(const PartServices& services, VXProtocol& protocol);

// The step that commands on the open protocol begin with: a view gets its source, any other
// protocol needs nothing.
bool PrepareView(const PartServices& services, VXProtocol& protocol);

// Makes the view a part of its own.
void DetachView(VXProtocol& protocol);

}  // namespace quillmar
