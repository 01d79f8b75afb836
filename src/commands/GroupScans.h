// Groups for the group manager and the bill of materials: a new protocol that lists what belongs
// together in the model, and which the host then shows.
#pragma once

#include "commands/CommandContext.h"

namespace quillmar {

// The active assembly with its tree.
int ScanAssembly(const CommandContext& context);
// The selected object with its tree.
int ScanSelected(const CommandContext& context);
// The counted parts of the active assembly's tree, for the bill of materials.
int ScanBillOfMaterials(const CommandContext& context);

// Makes `group` the group of a protocol's tree, and of its members when it is a group itself; false
// when that protocol does not open or the group cannot be written.
bool MakeGroupOf(const CommandContext& context, const std::string& protocolId, VXProtocol& group);

// Lists the active assembly in the open group protocol, prepared so that the host scans its
// children. A session or a CAD without an assembly leaves the group as it is.
void PutAssemblyIntoGroup(const CommandContext& context, VXProtocol& group);

// Takes the first of the scanned members that the CAD does not hold as the next object of the group
// manager; there is none when the CAD holds them all.
void FindNextGroupObject(const CommandContext& context);

}  // namespace quillmar
