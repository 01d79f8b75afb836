// A host may round in another direction, compute with less precision or trap on floating-point
// errors. Code that computes with reals does so inside this scope.
#pragma once

namespace quillmar::platform {

// Sets round-to-nearest, full precision, no traps; restores what it found.
class StandardFloatingPoint {
 public:
  StandardFloatingPoint();
  ~StandardFloatingPoint();
  StandardFloatingPoint(const StandardFloatingPoint&) = delete;
  StandardFloatingPoint& operator=(const StandardFloatingPoint&) = delete;

 private:
  unsigned sse = 0;
  unsigned short x87 = 0;
};

}  // namespace quillmar::platform
