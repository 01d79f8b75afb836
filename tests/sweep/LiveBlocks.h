// Blocks of memory that operator new of this process has given and not got back, those of the
// library under test among them.
#pragma once

#include <optional>

namespace quillmar::contract {

// Nothing where the library has an allocator of its own.
std::optional<long> LiveBlocks();

}  // namespace quillmar::contract
