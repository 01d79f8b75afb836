// Allocations of this process, of which those that the library under test makes can fail.
#pragma once

#include <map>

namespace quillmar::contract {

// Who calls, as far as it matters here.
enum class Origin { Library, Platform, Between, Elsewhere };

// Counted while armed. From the failing one on, the next that the library makes fails, or all that
// it makes.
struct Allocations {
  bool armed = false;
  bool fromThenOn = false;
  int count = 0;
  int failing = 0;  // 0: none
  int failed = 0;   // number of the first that failed, 0: none did
  // Of the addresses met so far: libraries stay where they are while it is armed.
  std::map<void*, Origin> origins = {};
};
extern Allocations allocations;

}  // namespace quillmar::contract
