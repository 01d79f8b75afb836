// Copies of protocols under identifiers of their own.
#pragma once

#include <string>

#include "commands/ProtocolCreation.h"

namespace quillmar {

// A stored copy of what a reference text carries, without links and without members of a bolted
// connection.
bool CopyProtocol(const PartServices& services, const std::string& reference, ProtocolTexts& texts);

// Makes `copy`, which is not open, a copy of the open protocol that bears its own identifier as
// the object's identity.
bool CopyUnderOwnIdentity(VXProtocol& source, VXProtocol& copy);

// Gives the selected object a copy of its protocol, so that it shares it with no other object.
bool CreateUniqueCopy(const PartServices& services);

}  // namespace quillmar
