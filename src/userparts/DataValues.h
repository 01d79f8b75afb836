// Data parameters of a protocol that is given as a reference text.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// "name,value,unit" of each of the names (joined by ",") that the protocol has, joined by ",";
// commas in values are written "<VXCOMMA>". Empty when the text is no reference. The protocol is
// made for the time of the call only.
std::string GetDataValues(const PartServices& services, const std::string& reference,
                          const std::string& names);

}  // namespace quillmar
