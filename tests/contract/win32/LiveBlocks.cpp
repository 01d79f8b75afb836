#include "../../sweep/LiveBlocks.h"

namespace quillmar::contract {

std::optional<long> LiveBlocks() { return std::nullopt; }

}  // namespace quillmar::contract
