#include "platform/win32/SpareWorker.h"

#include <utility>

#include "platform/win32/Win32.h"

namespace quillmar::platform::win32 {
namespace {

SRWLOCK* barrier = nullptr;

}  // namespace

// The thread may go on when the library is gone already: it waits inside the system, and the lock
// that it waits for, a few bytes, stays allocated.
void SetWorkerAside() {
  if (barrier != nullptr) return;
  auto* lock = static_cast<SRWLOCK*>(HeapAlloc(GetProcessHeap(), 0, sizeof(SRWLOCK)));
  if (lock == nullptr) return;
  InitializeSRWLock(lock);
  AcquireSRWLockExclusive(lock);
  auto* const wait =
      reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(&AcquireSRWLockExclusive));
  if (QueueUserWorkItem(wait, lock, WT_EXECUTELONGFUNCTION) != FALSE) barrier = lock;
}

void GiveWorkerBack() {
  if (SRWLOCK* lock = std::exchange(barrier, nullptr)) ReleaseSRWLockExclusive(lock);
}

}  // namespace quillmar::platform::win32
