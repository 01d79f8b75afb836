#include "core/Pages.h"

#include <sys/mman.h>

namespace quillmar::strict {

std::byte* ReservePages(std::size_t count) {
  void* pages = mmap(nullptr, count * kPageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return pages == MAP_FAILED ? nullptr : static_cast<std::byte*>(pages);
}

void FreePages(std::byte* firstPage, std::size_t count) { munmap(firstPage, count * kPageSize); }

void SetAccess(std::byte* firstPage, std::size_t count, Access access) {
  if (access == Access::None) {
    // Mapped anew: that frees the memory, and the system joins such ranges into one.
    mmap(firstPage, count * kPageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
    return;
  }
  mprotect(firstPage, count * kPageSize,
           access == Access::Read ? PROT_READ : PROT_READ | PROT_WRITE);
}

}  // namespace quillmar::strict
