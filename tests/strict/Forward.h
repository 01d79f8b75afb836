// Exports of Keelcomm.dll and Keellink.dll: each passes the call on to the core.
//
// The exports are declared here with an `int` result where the contract says `short`, and fill the
// upper half of the register with garbage, which the contract allows them. A library that lacks
// a function is made by compiling with -D<function>=<another name>.
#pragma once

#include <type_traits>

#include "CoreLink.h"

namespace quillmar::strict {

inline int WithGarbage(short result) {
  return static_cast<int>(0x5EA70000u | static_cast<unsigned short>(result));
}
inline int WithGarbage(int count) { return count; }

}  // namespace quillmar::strict

#define STRICT_FORWARD(name, result, parameters, arguments)                          \
  QM_EXTERN_C QM_EXPORT int QM_STDCALL name parameters {                             \
    using Function = result(QM_CDECL*) parameters;                                   \
    static const auto target =                                                       \
        reinterpret_cast<Function>(quillmar::strict::CoreFunction("Strict_" #name)); \
    return quillmar::strict::WithGarbage(target arguments);                          \
  }
