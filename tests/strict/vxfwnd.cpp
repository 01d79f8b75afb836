// The strict window helper. It removes its argument itself; no window is touched.
#include "RecordedCall.h"
#include "quillmar/BoltedConnections.h"

#define STRICT_EXPORT(name, result, parameters, arguments)                      \
  QM_EXTERN_C QM_EXPORT result QM_STDCALL name parameters {                     \
    return quillmar::strict::RecordedCall(#name, #arguments).Perform arguments; \
  }
QM_FOREGROUND_FUNCTIONS(STRICT_EXPORT)
