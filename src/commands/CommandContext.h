// What the protocol commands work with, and what they remember from one command to the next.
#pragma once

#include <string>
#include <vector>

#include "calclink/IpcLibrary.h"
#include "parts/PartServices.h"

namespace quillmar {

struct CommandState {
  // Identifier of the protocol that the active assembly carries, as a command saw it last.
  std::string currentAssembly;
  // What the next timed insert of the group manager puts into the CAD, and those members of the
  // scanned group that come after it.
  std::string nextGroupObject;
  std::vector<std::string> groupMembers;
};

struct CommandContext {
  const PartServices& services;
  const IpcLibrary& ipc;
  CommandState& state;
};

}  // namespace quillmar
