// The one place where failures are recorded. Reports are kept in memory and, when tracing is
// switched on for the machine ("TraceEnabled" = 1 in section "Diagnostics" of Afx.ini in the
// Windows folder), written to the debugger output. The user never sees them.
#pragma once

#include <deque>
#include <string>

namespace quillmar {

// Where a report comes from: the source file as the build recorded it, and its build stamps.
struct SourceStamp {
  const char* file;
  int line;
  const char* date;
  const char* time;
  const char* modified;
};

class ErrorLog {
 public:
  // `keptReports`: how many of the newest reports are kept.
  explicit ErrorLog(std::size_t keptReports = 10000) : keptReports(keptReports) {}

  void ReportError(const std::string& message, const SourceStamp& source);

  // Reports the exception that is being handled, as far as there is memory for it.
  void ReportException(const char* where, const SourceStamp& source) noexcept;

  // A whole step failed: with tracing on, writes the step's message with the newest report and
  // then the ten newest reports, newest first.
  void ReportFailure(const std::string& stepMessage) const;

 private:
  // The newest reports, oldest first. Nothing looks further back than ten, so old ones go when a
  // long session piles them up.
  std::deque<std::string> reports;
  std::size_t keptReports;
};

}  // namespace quillmar

// The place that reports. Evaluated where it stands, so that the stamps are those of the file that
// found the failure.
#define QM_HERE \
  ::quillmar::SourceStamp { __FILE__, __LINE__, __DATE__, __TIME__, __TIMESTAMP__ }
