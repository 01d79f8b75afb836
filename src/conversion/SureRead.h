// Reading what a conversion will write over.
#pragma once

#include "protocol/VXProtocol.h"

namespace quillmar {

// Reads a data parameter; false when the protocol does not have it. A store says the same when it
// fails for a moment, and the conversion would then lose the value: so it is asked a second time.
inline bool ReadSurely(VXProtocol& protocol, TextRef name, std::string& value, std::string& unit) {
  return protocol.FindDataParam(name, value, unit) || protocol.FindDataParam(name, value, unit);
}

}  // namespace quillmar
