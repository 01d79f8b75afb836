// A thread for calls to other programs while the library is being unloaded.
#pragma once

namespace quillmar::platform::win32 {

// The system carries every call to another program's object by a thread of the process's pool, and
// ends such threads when they have been idle for some seconds. While a library is unloaded no new
// thread gets to run: a call made then would never return. So one thread of the pool is set aside
// as soon as there is an object to call, and given back when the library is to be unloaded.
void SetWorkerAside();
void GiveWorkerBack();

}  // namespace quillmar::platform::win32
