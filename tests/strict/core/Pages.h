// Memory by whole pages with settable access.
#pragma once

#include <cstddef>

namespace quillmar::strict {

inline constexpr std::size_t kPageSize = 4096;

enum class Access { None, Read, ReadWrite };

// `count` pages without access, or null. They live until the process ends: what expired must stay
// unreadable, and an address must not be given out twice.
std::byte* ReservePages(std::size_t count);
void SetAccess(std::byte* firstPage, std::size_t count, Access access);

}  // namespace quillmar::strict
