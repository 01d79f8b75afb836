// A session with an add-in: what the CAD's glue does, on a machine with the module and the suite.
// The add-in is logged in, a spur gear is calculated, and what the add-in then holds is told.
#pragma once

#include <string>
#include <vector>

#include "addin/Trials.h"

namespace tools {

// On a machine of this project's suite, whose calculation host takes its input from files.
struct TryOutPlace {
  std::string module;  // Quillmar.dll
  std::string suite;   // folder of the suite
};

// `library` is the add-in's file. Each step needs those in front of it.
std::vector<Step> TryOutSteps(const std::string& library, const Exports& exports,
                              const TryOutPlace& place);

}  // namespace tools
