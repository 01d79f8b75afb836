// Which calls across the borders have failed, so that a page or a count can mark them.
#pragma once

#include <vector>

#include "recorder/TraceReader.h"

namespace session {

// For each of the calls, in the order in which they began. Results differ from border to border:
// 0 is a failure of most functions, but the answer "no" of those that are asked something. These
// are no failures either: a store that is told to close a protocol which is not open (who makes
// sure that it is closed does not ask first), and a list that is asked for again with the room that
// it needs.
std::vector<bool> FailedCalls(const std::vector<quillmar::recorder::TracedCall>& calls);

}  // namespace session
