// A procedure written down as a table, and what it tells of calls that fail.
#pragma once

#include <string>
#include <vector>

#include "FaultMode.h"

namespace quillmar::test {

// One call of a procedure, in its order.
struct Step {
  std::string label;  // "" or a place to go on from
  std::string call;   // as the list of calls names it; "" for a step that makes no call
  // Reported when the call fails, in order. A step without a call always reports and "fails".
  std::vector<std::string> reports = {};
  std::string onFailure = "";  // label to go on from; "" for the next step
  std::string onSuccess = "";
  bool askedAgain = false;  // until it succeeds, so that a single failure does not count
  bool missing = false;     // what is read is not there: the call fails by itself
};

using Procedure = std::vector<Step>;

inline constexpr const char* kEnd = "end";

struct Expectation {
  std::vector<std::string> calls;
  std::vector<std::string> reports;
};

// Follows the table with the call of that number failing (0: none).
Expectation Follow(const Procedure& procedure, int failing, Mode mode);

}  // namespace quillmar::test
