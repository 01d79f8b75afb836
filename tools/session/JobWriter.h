// Writes back what a session ended with, as a job that can be changed and run on its document
// again.
#pragma once

#include <string>

#include "session/Job.h"
#include "session/SessionData.h"

namespace session {

// JSON text in UTF-8. Each step names its objects in the CAD, with their protocols and parameters;
// inputs have the values that stand in the model, and changes have gone into the calculations that
// they changed. What the job does not calculate (options, logins, links) is kept in its place.
std::string WriteJob(const Job& job, const SessionData& session);

}  // namespace session
