// The steps of a job: readers by the word that names them.
#pragma once

#include <set>
#include <string>

#include "session/JobFields.h"

namespace session {

// What the readers of steps need to know of the job, and what they add to it.
struct Reading {
  std::string standard;           // of steps that name none
  std::set<std::string> names;    // of all steps so far
  std::set<std::string> started;  // names of calculations among them
  std::set<std::string> groups;   // and of groups
};

using StepReader = Step (*)(const JobJson& json, const std::string& field, Reading& reading);

Step ReadCalculation(const JobJson& json, const std::string& field, Reading& reading);
Step ReadChange(const JobJson& json, const std::string& field, Reading& reading);
// Any step; its "do" says which.
Step ReadStep(const JobJson& json, const std::string& field, Reading& reading);

}  // namespace session
