// Functions that are asked for from inside another call and run later, on the module's own message
// loop. One function is queued at a time; the newest request wins.
#pragma once

#include <functional>

#include "commands/CommandContext.h"

namespace quillmar {

// Numbers of functions that the module itself queues.
inline constexpr int kRefreshAllLinks = 4001;
inline constexpr int kUpdateExtendedData = 4002;

class QueuedFunctions {
 public:
  // `post` posts the message that brings Run about.
  QueuedFunctions(const CommandContext& context, std::function<void()> post);

  void Queue(int number);
  // Runs the queued function; numbers without a function are ignored. The function's result.
  int Run();

 private:
  const CommandContext& context;
  std::function<void()> post;
  int pending = 0;
};

}  // namespace quillmar
