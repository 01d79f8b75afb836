#include "OpenHandles.h"

#include <windows.h>

namespace quillmar::contract {

int OpenHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return static_cast<int>(count);
}

}  // namespace quillmar::contract
