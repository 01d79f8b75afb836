// Libraries of the strict set as its own parts and its tests find them, and the road to the core.
#pragma once

#include "StrictCore.h"

namespace quillmar::strict {

// The library at `path` (below drive C, with "/" between the parts) of the image that this code was
// loaded from. It stays loaded for the life of the process. Ends the process with a message when
// it cannot be loaded: the set is then installed wrongly and nothing it says can be trusted.
void* ImageLibrary(const char* path);

// A function of such a library, null when it has none of that name.
void* FunctionOf(void* library, const char* name);

// A function of the core; ends the process when the core has none of that name.
void* CoreFunction(const char* name);

// The query and control functions.
#define STRICT_DECLARE(name, result, parameters, arguments) result(QM_CDECL* name) parameters;
struct CoreFunctions {
  STRICT_CORE_FUNCTIONS(STRICT_DECLARE)
};
#undef STRICT_DECLARE

const CoreFunctions& Core();

}  // namespace quillmar::strict
