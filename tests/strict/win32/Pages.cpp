#include "core/Pages.h"

#include <windows.h>

namespace quillmar::strict {

std::byte* ReservePages(std::size_t count) {
  return static_cast<std::byte*>(
      VirtualAlloc(nullptr, count * kPageSize, MEM_COMMIT | MEM_RESERVE, PAGE_NOACCESS));
}

void FreePages(std::byte* firstPage, std::size_t) { VirtualFree(firstPage, 0, MEM_RELEASE); }

void SetAccess(std::byte* firstPage, std::size_t count, Access access) {
  const DWORD protection = access == Access::None   ? PAGE_NOACCESS
                           : access == Access::Read ? PAGE_READONLY
                                                    : PAGE_READWRITE;
  DWORD before = 0;
  VirtualProtect(firstPage, count * kPageSize, protection, &before);
}

}  // namespace quillmar::strict
