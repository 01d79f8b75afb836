// What the CAD measured on an object, kept in its protocol.
#pragma once

#include "parts/PartServices.h"

namespace quillmar {

// Reference dimensions and physical properties into the protocol's data parameters, for kinds that
// have a body of their own.
void ReadPhysicalProperties(const PartServices& services, VXProtocol& protocol);

// Which parts of an assembly are visible, when the driver tells it.
void PartStateUpdate(const PartServices& services, VXProtocol& protocol);

// Which features are switched on, when the driver tells it.
void ReadFeatureStates(const PartServices& services, VXProtocol& protocol);

// The way back: shows and hides the parts of an assembly as the protocol says.
void SendPartsVisibility(const PartServices& services, VXProtocol& protocol);

}  // namespace quillmar
