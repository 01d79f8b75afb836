// Calls whose callee removes its arguments or not, and knows more or fewer than are passed.
#include "platform/ForeignCall.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillmar::platform {
namespace {

#define QM_KEPT __attribute__((noinline, used))

QM_KEPT __attribute__((cdecl)) int CdeclTwo(int a, int b) { return a * 10 + b; }
QM_KEPT __attribute__((cdecl)) int CdeclSix(int a, int b, int c, int d, int e, int f) {
  return ((((a * 10 + b) * 10 + c) * 10 + d) * 10 + e) * 10 + f;
}
QM_KEPT __attribute__((stdcall)) int StdcallNone() { return 77; }
QM_KEPT __attribute__((stdcall)) int StdcallTwo(int a, int b) { return a * 10 + b; }
QM_KEPT __attribute__((stdcall)) int StdcallFour(int a, int b, int c, int d) {
  return ((a * 10 + b) * 10 + c) * 10 + d;
}
QM_KEPT __attribute__((stdcall)) int StdcallSix(int a, int b, int c, int d, int e, int f) {
  return CdeclSix(a, b, c, d, e, f);
}

struct CallCase {
  const char* name;
  void* function;
  std::vector<std::uintptr_t> words;
  int result;
};

template <class Function>
void* Address(Function* function) {
  return reinterpret_cast<void*>(function);
}

const CallCase kCalls[] = {
    {"cdecl, all arguments", Address(CdeclTwo), {1, 2}, 12},
    {"cdecl, more than it knows", Address(CdeclTwo), {1, 2, 3, 4, 5, 6}, 12},
    {"cdecl, fewer than it knows", Address(CdeclSix), {1, 2, 3, 4}, 123400},
    {"stdcall, none", Address(StdcallNone), {}, 77},
    {"stdcall, all arguments", Address(StdcallFour), {1, 2, 3, 4}, 1234},
    {"stdcall, more than it knows", Address(StdcallFour), {1, 2, 3, 4, 5, 6}, 1234},
    {"stdcall, none known of six", Address(StdcallNone), {1, 2, 3, 4, 5, 6}, 77},
    {"stdcall, fewer than it knows", Address(StdcallSix), {1, 2, 3, 4, 5}, 123450},
    {"stdcall, none passed of six", Address(StdcallSix), {}, 0},
};

// A stack pointer left wrong by one word would leave the stack within the repetitions.
TEST(ForeignCall, ReturnsTheResultAndTheStackWhoeverRemovesTheArguments) {
  constexpr int kRepetitions = 2'000'000;
  for (const CallCase& call : kCalls) {
    int result = 0;
    for (int repetition = 0; repetition < kRepetitions; ++repetition) {
      result = CallForeign(call.function, call.words.data(), call.words.size());
    }
    EXPECT_EQ(result, call.result) << call.name;
  }
}

TEST(ForeignCall, PassesALongList) {
  std::vector<std::uintptr_t> words(5000, 9);
  words[0] = 4;
  words[1] = 2;
  EXPECT_EQ(CallForeign(Address(StdcallTwo), words.data(), words.size()), 42);
}

// Returns where its first argument lies within 16 bytes, having pushed the stack out of line by
// the words asked for before it calls `CallForeign`.
extern "C" int ArgumentPlace();
asm(R"(
  .text
_ArgumentPlace:
  leal 4(%esp), %eax
  andl $15, %eax
  ret
)");

int PlaceFromShiftedStack(int words, std::size_t count) {
  const std::uintptr_t arguments[4] = {};
  int (*call)(void*, const std::uintptr_t*, std::size_t) = CallForeign;
  int place = -1;
  asm volatile(
      "movl %%esp, %%ebx\n\t"
      "shll $2, %%ecx\n\t"
      "subl %%ecx, %%esp\n\t"
      "pushl %%edx\n\t"
      "pushl %[arguments]\n\t"
      "pushl %[function]\n\t"
      "call *%[call]\n\t"
      "movl %%ebx, %%esp"
      : "=a"(place), "+c"(words), "+d"(count)
      : [call] "D"(call), [arguments] "S"(arguments), [function] "0"(Address(ArgumentPlace))
      : "ebx", "memory", "cc");
  return place;
}

TEST(ForeignCall, AlignsTheArgumentsForACallerThatDoesNot) {
  for (int words = 0; words < 4; ++words) {
    for (std::size_t count = 0; count <= 4; ++count) {
      EXPECT_EQ(PlaceFromShiftedStack(words, count), 0) << words << " words, " << count;
    }
  }
}

}  // namespace
}  // namespace quillmar::platform
