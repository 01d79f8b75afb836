#include "CoreLink.h"

#include <cstdio>
#include <cstdlib>

namespace quillmar::strict {

void* CoreFunction(const char* name) {
  static void* const core = ImageLibrary(STRICT_CORE_FOLDER "/" STRICT_CORE_LIBRARY);
  void* function = FunctionOf(core, name);
  if (function == nullptr) {
    std::fprintf(stderr, "strict companions: the core has no %s\n", name);
    std::abort();
  }
  return function;
}

const CoreFunctions& Core() {
#define STRICT_BIND(name, result, parameters, arguments) \
  reinterpret_cast<result(QM_CDECL*) parameters>(CoreFunction(#name)),
  static const CoreFunctions functions{STRICT_CORE_FUNCTIONS(STRICT_BIND)};
#undef STRICT_BIND
  return functions;
}

}  // namespace quillmar::strict
