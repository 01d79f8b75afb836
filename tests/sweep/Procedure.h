// A procedure written down as a table, and what it tells of calls that fail.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "FaultMode.h"

namespace quillmar::test {

// What a call does to the protocol object that makes it.
enum class Effect {
  None,     // nothing; an object that is not ready does not make the call and reports that
  Opens,    // ready when it succeeds
  Creates,  // the same, with nothing in the protocol
  Fills,    // the protocol has what is read from it
  Erases,   // not ready any more, whatever comes of it
  Any       // nothing, and an object that is not ready makes the call too, which fails then
};

// One call of a procedure, in its order.
struct Step {
  std::string label = "";  // "" or a place to go on from
  std::string call = "";   // as the list of calls names it; "" for a step that makes no call
  // Reported when the call fails, in order. A step without a call always reports and "fails".
  std::vector<std::string> reports = {};
  std::string onFailure = "";  // label to go on from; "" for the next step
  std::string onSuccess = "";
  std::string object = "";  // protocol object that makes the call; "" for other calls
  Effect effect = Effect::None;
  bool reads = false;       // what an empty protocol does not have
  bool askedAgain = false;  // until it succeeds, so that a single failure does not count
  bool missing = false;     // what is read is not there: the call fails by itself
  int result = 0;           // what the road returns from here on; 0: as before
};

using Procedure = std::vector<Step>;

inline constexpr const char* kEnd = "(end)";
// Stands for a protocol object until On names it.
inline constexpr const char* kThis = "this";
inline constexpr const char* kNotReady = "Protocol is not ready";

// One after the other.
Procedure Joined(std::initializer_list<Procedure> pieces);
// The same as a piece of its own: labels in it are not seen from outside and may be used again.
Procedure Block(std::initializer_list<Procedure> pieces);
// Block whose calls are those of that protocol object, where none is named yet.
Procedure On(const std::string& object, std::initializer_list<Procedure> pieces);

struct Expectation {
  std::vector<std::string> calls;
  std::vector<std::string> reports;
  int result = 0;
};

// Follows the table with the call of that number failing (0: none).
Expectation Follow(const Procedure& procedure, int failing, Mode mode);

}  // namespace quillmar::test
