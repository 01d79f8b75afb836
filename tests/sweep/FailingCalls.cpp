#include "FailingCalls.h"

#include <string_view>

#include "Machine.h"

namespace quillmar::contract {

Fault fault;

int QM_CDECL CountAndRefuse(const char* function) {
  ++fault.calls;
  if (fault.number == 0) return 0;
  if (fault.mode == test::Mode::Once) return fault.calls == fault.number ? 1 : 0;
  if (fault.calls < fault.number) return 0;
  if (function == std::string_view("host 16")) EndWait();
  return 1;
}

}  // namespace quillmar::contract
