#include "platform/FloatingPoint.h"

#if defined(__i386__) || defined(__x86_64__)

#include <xmmintrin.h>

namespace quillmar::platform {
namespace {

constexpr unsigned kSseStandard = 0x1F80;        // all masked, round to nearest
constexpr unsigned short kX87Standard = 0x037F;  // the same, 64-bit mantissa

unsigned short X87ControlWord() {
  unsigned short word = 0;
  __asm__ volatile("fnstcw %0" : "=m"(word));
  return word;
}

// Pending exceptions are dropped first: a word that unmasks them would raise them in whoever
// computes next.
void SetX87ControlWord(unsigned short word) {
  __asm__ volatile("fnclex\n\tfldcw %0" : : "m"(word));
}

}  // namespace

StandardFloatingPoint::StandardFloatingPoint() : sse(_mm_getcsr()), x87(X87ControlWord()) {
  _mm_setcsr(kSseStandard);
  SetX87ControlWord(kX87Standard);
}

StandardFloatingPoint::~StandardFloatingPoint() {
  _mm_setcsr(sse);
  SetX87ControlWord(x87);
}

}  // namespace quillmar::platform

#else

#include <fenv.h>

namespace quillmar::platform {

StandardFloatingPoint::StandardFloatingPoint()
    : sse(static_cast<unsigned>(fegetround())),
      x87(static_cast<unsigned short>(fedisableexcept(FE_ALL_EXCEPT))) {
  fesetround(FE_TONEAREST);
}

StandardFloatingPoint::~StandardFloatingPoint() {
  fesetround(static_cast<int>(sse));
  feclearexcept(FE_ALL_EXCEPT);
  feenableexcept(x87);
}

}  // namespace quillmar::platform

#endif
