// A call of the strict companions that fails: once, or all calls from one on.
#pragma once

#include "FaultMode.h"
#include "quillmar/Conventions.h"

namespace quillmar::contract {

// The call that fails, counted from 1; 0: none.
struct Fault {
  int number = 0;
  test::Mode mode = test::Mode::Once;
  int calls = 0;  // so far
};
extern Fault fault;

// The visitor that counts and refuses.
int QM_CDECL CountAndRefuse(const char* function);

}  // namespace quillmar::contract
