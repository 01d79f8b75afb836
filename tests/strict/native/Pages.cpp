#include "core/Pages.h"

#include <sys/mman.h>

namespace quillmar::strict {

std::byte* ReservePages(std::size_t count) {
  void* pages = mmap(nullptr, count * kPageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return pages == MAP_FAILED ? nullptr : static_cast<std::byte*>(pages);
}

void SetAccess(std::byte* firstPage, std::size_t count, Access access) {
  const int protection = access == Access::None   ? PROT_NONE
                         : access == Access::Read ? PROT_READ
                                                  : PROT_READ | PROT_WRITE;
  mprotect(firstPage, count * kPageSize, protection);
}

}  // namespace quillmar::strict
