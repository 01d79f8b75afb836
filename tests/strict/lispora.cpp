// The strict LISP generator. Its function removes its arguments itself.
#include "RecordedCall.h"
#include "quillmar/UserParts.h"

#define STRICT_EXPORT(name, result, parameters, arguments)                      \
  QM_EXTERN_C QM_EXPORT result QM_STDCALL name parameters {                     \
    return quillmar::strict::RecordedCall(#name, #arguments).Perform arguments; \
  }
QM_LISP_FUNCTIONS(STRICT_EXPORT)
