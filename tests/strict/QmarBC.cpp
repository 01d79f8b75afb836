// The strict bolted-connection library. Its functions remove their arguments themselves.
#include "RecordedCall.h"
#include "quillmar/BoltedConnections.h"

#define STRICT_EXPORT(name, result, parameters, arguments)                      \
  QM_EXTERN_C QM_EXPORT result QM_STDCALL name parameters {                     \
    return quillmar::strict::RecordedCall(#name, #arguments).Perform arguments; \
  }
QM_BOLTED_CONNECTION_FUNCTIONS(STRICT_EXPORT)
