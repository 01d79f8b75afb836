// All functions of a CAD driver, recorded and answered. An add-in that lacks a function is made by
// compiling with -D<function>=<another name>.
#include "RecordedCall.h"
#include "quillmar/CadDriver.h"

#define STRICT_EXPORT(need, name, result, parameters, arguments)                \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters {                       \
    return quillmar::strict::RecordedCall(#name, #arguments).Perform arguments; \
  }
QM_CAD_FUNCTIONS(STRICT_EXPORT)
QM_CAD_2D_FUNCTIONS(STRICT_EXPORT)
