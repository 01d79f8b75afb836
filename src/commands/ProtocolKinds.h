// What kind of thing a protocol stands for, told by its data file.
#pragma once

#include "protocol/VXProtocol.h"

namespace quillmar {

// The numbers are those that callers of GetProtocolType get.
enum class ProtocolKind {
  Calculation = 1,
  BoltedConnection = 2,
  UserPart = 3,
  Assembly = 4,
  Group = 5
};

// Calculation for everything that is no user part, assembly or group: a bolted connection is told
// by its data, not by its file.
ProtocolKind KindOf(VXProtocol& protocol);

}  // namespace quillmar
