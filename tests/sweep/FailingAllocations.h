// Allocations of this process, of which those that the library under test makes can fail.
#pragma once

namespace quillmar::contract {

// Counted while armed. From the failing one on, the next that the library makes fails, or all that
// it makes.
struct Allocations {
  bool armed = false;
  bool fromThenOn = false;
  int count = 0;
  int failing = 0;  // 0: none
  int failed = 0;   // number of the first that failed, 0: none did
};
extern Allocations allocations;

}  // namespace quillmar::contract
