// Memory by whole pages with settable access.
#pragma once

#include <cstddef>

namespace quillmar::strict {

inline constexpr std::size_t kPageSize = 4096;

enum class Access { None, Read, ReadWrite };

// `count` pages without access, or null.
std::byte* ReservePages(std::size_t count);
// Their addresses may be given out again: only when nobody is left who may have kept one.
void FreePages(std::byte* firstPage, std::size_t count);
void SetAccess(std::byte* firstPage, std::size_t count, Access access);

}  // namespace quillmar::strict
