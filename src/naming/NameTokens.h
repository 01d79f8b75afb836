// What the tokens of a template stand for in a protocol: data of its own for some names, a general
// lookup for all others.
#pragma once

#include <string>

#include "naming/UniqueIds.h"
#include "protocol/VXProtocol.h"

namespace quillmar {

// Value of one token; names match without regard to case. Empty when the protocol has none.
std::string TokenValueOf(VXProtocol& protocol, UniqueIds& ids, const std::string& token);

// Template of a part's name, caption or bill-of-materials text, filled from its protocol.
std::string ExpandNameTemplate(const std::string& text, VXProtocol& protocol, UniqueIds& ids);

// A code of 10 upper-case base-36 characters that is the same for the same size text; empty for
// an empty text.
std::string SizeCode(const std::string& size);

}  // namespace quillmar
