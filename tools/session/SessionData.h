// What a session did and left, as plain data: taken by whoever shows it, be it on the terminal, in
// a file or on a page. Nothing here is computed anew when it is read. All texts are UTF-8.
//
// Further plain data that belong to it: the model (DocumentJson, parsed from `document`), the bill
// of materials (MakeBillOfMaterials of it), units of parameters (UnitsOfReference).
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "recorder/TraceReader.h"

namespace session {

// One step of the job. The border calls from `begin` to `end` belong to it.
struct StepRecord {
  std::string kind;  // the word of the job's "do"
  std::string name;  // by which the job calls it; empty for a step that has none
  std::string title;
  std::vector<std::pair<std::string, std::string>> inputs;
  std::vector<std::string> objects;  // names of the objects in the CAD that it made or changed
  bool made = false;                 // it put them there
  std::vector<std::string> results;  // lines that say what came of it
  std::vector<std::string> files;    // what other programs were given, with Windows paths
  std::string failure;               // why it failed; empty when it did not
  std::int64_t begin = 0;            // microseconds since the session began
  std::int64_t end = 0;
};

struct SessionData {
  std::string job;
  std::vector<StepRecord> steps;
  // Calls across the borders and the session's own calls of the module, in the order in which they
  // began.
  std::vector<quillmar::recorder::TracedCall> calls;
  // The CAD's document as JSON; empty when there was none yet.
  std::string document;
};

}  // namespace session
