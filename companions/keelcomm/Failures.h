// The border of the library, and what becomes of a failure of the database.
#pragma once

#include <string>

#include "keelcomm/Sqlite.h"
#include "recorder/Recorder.h"

namespace quillmar::keelcomm {

inline constexpr recorder::Border kBorder{"Keelcomm", recorder::Kind::Storage};

// One line to the error output, the debugger and the trace: why a call has failed.
void ReportFailure(const std::string& why);

// The result of an entry point; 0, with a report, when the database refuses.
template <typename Function>
auto Guarded(const Function& function) -> decltype(function()) {
  try {
    return function();
  } catch (const StoreError& error) {
    ReportFailure(error.what());
    return 0;
  }
}

}  // namespace quillmar::keelcomm
