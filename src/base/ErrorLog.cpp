#include "base/ErrorLog.h"

#include <exception>

#include "platform/Profile.h"
#include "platform/System.h"

namespace quillmar {
namespace {

constexpr std::size_t kShownReports = 10;

// Read at every report, so that tracing can be switched while the host runs.
bool TraceEnabled() {
  return platform::ReadProfileInt("Afx.ini", "Diagnostics", "TraceEnabled", 0) == 1;
}

}  // namespace

void ErrorLog::ReportError(const std::string& message, const SourceStamp& source) {
  std::string report = message + "\n  File: " + source.file +
                       ", Line: " + std::to_string(source.line) + "\n  (Compiled: " + source.date +
                       "," + source.time + ", Source Modified: " + source.modified + ")";
  if (TraceEnabled()) platform::DebugOutput(report);
  reports.push_back(std::move(report));
  if (reports.size() > keptReports) reports.pop_front();
}

void ErrorLog::ReportException(const char* where, const SourceStamp& source) noexcept {
  try {
    try {
      throw;
    } catch (const std::exception& error) {
      ReportError(std::string(where) + ": " + error.what(), source);
    }
  } catch (...) {
    // Nobody is left who could be told.
  }
}

void ErrorLog::ReportFailure(const std::string& stepMessage) const {
  if (!TraceEnabled()) return;
  std::string text = stepMessage + " (" + (reports.empty() ? "" : reports.back()) + ")\n";
  std::size_t shown = 0;
  for (auto report = reports.rbegin(); report != reports.rend() && shown < kShownReports;
       ++report, ++shown) {
    text += *report + "\n";
  }
  platform::DebugOutput(text);
}

}  // namespace quillmar
