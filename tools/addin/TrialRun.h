// A trial from both sides: the child process that runs its steps, and the parent that gathers what
// came of them and goes on behind a step that took the child's life.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "addin/TryOut.h"

namespace tools {

struct Finding {
  std::string step;
  Judgement judgement;
};

// The child: runs the steps of a trial from `first` on. With the trial "list" it tells the driver
// functions that the add-in offers. Exit status 0 when it came to its end.
int RunTrialHere(const std::string& library, const std::string& trial, std::size_t first);
// The same with the steps of a session on the machine in `image`.
int RunTryOutHere(const std::string& library, const std::string& image, const TryOutPlace& place);

// The parent. Throws a ToolError when the library cannot be loaded.
std::vector<std::string> OfferedFunctions(const std::string& library, std::chrono::seconds limit);
std::vector<Finding> RunTrial(const std::string& library, const std::string& trial,
                              std::chrono::seconds limit);
std::vector<Finding> RunTryOut(const std::string& library, const std::string& image,
                               const TryOutPlace& place, std::chrono::seconds limit);

}  // namespace tools
