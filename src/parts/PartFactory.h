// Which part object a protocol gets.
#pragma once

#include <memory>

#include "parts/VXPart.h"

namespace quillmar {

// The part of the protocol's kind, with its local flag and caption made; null for a kind that has
// no part object. With `mustSucceed` also null when the local flag could not be kept in the
// protocol.
std::unique_ptr<VXPart> CreatePartForProtocol(const PartServices& services, VXProtocol& protocol,
                                              bool mustSucceed = false);

}  // namespace quillmar
