#include "session/Job.h"

#include <fmt/format.h>

#include <algorithm>

#include "drawboard/CodePage.h"
#include "session/JobFields.h"
#include "session/JobSteps.h"

namespace session {
namespace {

using Json = JobJson;

// Reads the list `key` of the job, each of whose items becomes a step. Without one nothing is read.
void ReadSteps(const Json& json, const char* key, const std::string& expected, StepReader read,
               Reading& reading, Job& job) {
  const auto found = json.find(key);
  if (found == json.end()) return;
  if (!found->is_array()) RefuseValue(key, expected, *found);
  for (std::size_t i = 0; i < found->size(); ++i) {
    job.steps.push_back(read((*found)[i], fmt::format("{}[{}]", key, i), reading));
  }
}

Json Parse(const std::string& text) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const std::size_t place = std::min(error.byte > 0 ? error.byte - 1 : 0, text.size());
    const auto line = std::count(text.begin(), text.begin() + static_cast<long>(place), '\n') + 1;
    const std::string rest = text.substr(place, text.find('\n', place) - place);
    throw JobError(fmt::format("The job is not JSON: line {} is wrong {}", line,
                               rest.empty() ? "at its end" : "at or just before: " + rest));
  }
}

}  // namespace

void PutInput(Inputs& inputs, const std::string& name, const std::string& value) {
  const auto given = std::find_if(inputs.begin(), inputs.end(),
                                  [&](const auto& input) { return input.first == name; });
  if (given == inputs.end()) {
    inputs.emplace_back(name, value);
  } else {
    given->second = value;
  }
}

Job ReadJob(const std::string& text) {
  const Json json = Parse(text);
  if (!json.is_object()) throw JobError("The job must be a JSON object");
  CheckObject(json, "",
              {"name", "document", "unit", "standard", "steps", "calculations", "changes"});
  Job job;
  job.name = ReadText(json, "", "name", "Session");
  job.document = ReadText(json, "", "document", "Session");
  CheckFileName(job.document, "document");
  job.unit = ReadText(json, "", "unit", "mm");
  if (job.unit != "mm" && job.unit != "in") {
    RefuseValue("unit", "\"mm\" or \"in\"", json["unit"]);
  }
  Reading reading;
  reading.standard = ReadText(json, "", "standard", "ISO");
  const bool plain = json.contains("calculations");
  if (plain == json.contains("steps")) {
    Refuse("steps", "a job has either steps, or calculations and changes");
  }
  ReadSteps(json, "steps", "a list of steps", ReadStep, reading, job);
  ReadSteps(json, "calculations", "a list of calculations", ReadCalculation, reading, job);
  if (job.steps.empty()) {
    RefuseValue(plain ? "calculations" : "steps", "a list that is not empty", Json::array());
  }
  ReadSteps(json, "changes", "a list of changes", ReadChange, reading, job);
  return job;
}

}  // namespace session
