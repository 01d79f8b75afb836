// The timed insert of the group manager's objects: it asks for one object after the other, and each
// is inserted a moment later, when the CAD has come to rest.
#pragma once

#include <cstdint>

#include "commands/CallbackDispatcher.h"
#include "commands/CommandContext.h"

namespace quillmar {

class GroupInsertTimer {
 public:
  GroupInsertTimer(const CommandContext& context, CallbackDispatcher& dispatcher);

  // Arms the timer, in place of one that has not expired yet. Its identifier, 0 when there is none.
  std::uintptr_t Arm();
  void Stop();

 private:
  void OnExpired(std::uintptr_t timer);
  void InsertNext();

  const CommandContext& context;
  CallbackDispatcher& dispatcher;
  std::uintptr_t armed = 0;
};

}  // namespace quillmar
