// Filling tables of functions that are bound by name.
#pragma once

#include "platform/Modules.h"

namespace quillmar {

// Binds a member of such a table to the module's function of that name; false, and the member
// unbound, when the module does not export it.
template <class Function>
bool BindFunction(Function& function, QmModule module, const char* name) {
  function.pointer =
      reinterpret_cast<typename Function::Pointer>(platform::FindFunction(module, name));
  return static_cast<bool>(function);
}

}  // namespace quillmar
