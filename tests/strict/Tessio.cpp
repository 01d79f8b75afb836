// The strict inter-process library: nothing is delivered, everything is recorded.
#include "quillmar/Ipc.h"

#include "RecordedCall.h"

#define STRICT_EXPORT(name, convention, result, parameters, arguments)          \
  QM_EXTERN_C QM_EXPORT result convention name parameters {                     \
    return quillmar::strict::RecordedCall(#name, #arguments).Perform arguments; \
  }
QM_IPC_FUNCTIONS(STRICT_EXPORT)
