// The steps of the protocol commands that give a CAD object and its protocol to each other:
// registration of an object's protocol, a new protocol for the active assembly, and the
// description of the active assembly.
#pragma once

#include <string>

#include "commands/CommandContext.h"

namespace quillmar {

// Writes into the open protocol what the CAD knows of its object: identity, drawn state,
// parameters, assembly path, visibility, physical properties. False when the protocol has no part
// object or the CAD does not tell its parameters.
bool RegisterCadSideProtocol(const PartServices& services, VXProtocol& protocol,
                             const std::string& identifier);

// Keeps the path of the active assembly's file in the protocol, when the CAD tells it.
void WriteAssemblyPath(const PartServices& services, VXProtocol& protocol);

// Makes a protocol for the CAD's active assembly and hands it over. It is closed afterwards and
// stays in the store, also when the CAD does not take it.
bool ConnectNewAssemblyProtocol(const CommandContext& context);

// Opens the active assembly's protocol in `protocol`, which is not open, and reads into it what
// the CAD knows of the assembly. An assembly without a protocol gets one; a user part that has
// become an assembly is made one. False in a session of the group manager, which has no assembly
// of its own.
bool DescribeActiveAssembly(const CommandContext& context, VXProtocol& protocol);

}  // namespace quillmar
