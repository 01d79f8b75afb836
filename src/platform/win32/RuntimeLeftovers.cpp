// Gives back what the compiler's runtime takes for this library and would keep when it is unloaded:
// the memory set aside for exceptions (about 20 kB), and the thread slot of the thread library. A
// process has 1,088 of these; a host that loads and unloads the module again and again would run
// out of them and be aborted. Compiled into libraries only.
#include <pthread.h>

#include <array>
#include <cstdlib>

#include "platform/win32/Win32.h"

// Of the runtime, which declares it in no header.
namespace __gnu_cxx {
extern void __freeres();
}

namespace {

constexpr DWORD kSlots = TLS_MINIMUM_AVAILABLE + 1024;

DWORD slot = TLS_OUT_OF_INDEXES;

// The thread library does not tell its slot: it is the one that its first use sets in this thread.
void FindSlot() {
  std::array<bool, kSlots> used;
  for (DWORD i = 0; i < kSlots; ++i) used[i] = TlsGetValue(i) != nullptr;
  pthread_self();
  for (DWORD i = 0; i < kSlots && slot == TLS_OUT_OF_INDEXES; ++i) {
    if (!used[i] && TlsGetValue(i) != nullptr) slot = i;
  }
}

void NTAPI OnLoad(PVOID, DWORD reason, PVOID) {
  if (reason == DLL_PROCESS_ATTACH) FindSlot();
}

void GiveBack() {
  __gnu_cxx::__freeres();
  if (slot != TLS_OUT_OF_INDEXES) TlsFree(slot);
}

// Before every other constructor, so that it is called behind every destructor.
__attribute__((constructor(101))) void GiveBackAtTheEnd() { std::atexit(&GiveBack); }

}  // namespace

// The system calls what stands here when it loads the library, in the order of the section names:
// ahead of the thread library, which stands in one of a later name.
extern "C" {
extern const PIMAGE_TLS_CALLBACK quillmarRuntimeOnLoad;
__attribute__((section(".CRT$XLB"), used)) const PIMAGE_TLS_CALLBACK quillmarRuntimeOnLoad =
    &OnLoad;
}
