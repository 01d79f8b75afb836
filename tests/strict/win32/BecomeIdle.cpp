#include "BecomeIdle.h"

#include <windows.h>

namespace quillmar::strict {

// A program is idle once it found its message queue empty.
void BecomeIdle() {
  MSG message;
  MsgWaitForMultipleObjects(0, nullptr, FALSE, 0, QS_ALLINPUT);
  PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
}

}  // namespace quillmar::strict
