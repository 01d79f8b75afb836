// What a session prints and writes: timeline, model, bill of materials.
#pragma once

#include <string>

#include "session/Session.h"

namespace session {

struct ReportStyle {
  bool colours = false;
  bool allCalls = false;  // also each call of the stores
  std::size_t width = 120;
};

std::string ReportText(const Session& session, const ReportStyle& style);

// Writes session.txt, session.html, document.json and bom.csv into a folder of the system. `drive`
// is the root of the machine's drive, without trailing backslash. Throws a SessionError for the
// first that cannot be written.
void WriteReport(const Session& session, const std::string& drive, const std::string& folder);

}  // namespace session
