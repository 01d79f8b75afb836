// How an exported function reaches the application: nothing is thrown across it, and before the
// library has started, or after it was taken down, it returns its failure result.
#pragma once

#include <string>

#include "app/QuillmarApp.h"

namespace quillmar {

// The one object of the process; null while the library is not attached.
QuillmarApp* Application();

// Runs an export on the application. An exception is this module's own fault or a lack of memory:
// it ends here, with a report and the failure result.
template <class Result, class Operation>
Result Forward(const char* name, Result failure, Operation operation) {
  QuillmarApp* application = Application();
  if (application == nullptr) return failure;
  try {
    return operation(*application);
  } catch (...) {
    application->Services().errors.ReportException(name, QM_HERE);
    return failure;
  }
}

// A text argument; null counts as empty.
inline std::string Text(const char* text) { return text != nullptr ? text : ""; }

}  // namespace quillmar
