// The control block of a trace: a small file that every process of a machine maps into its memory.
// It switches the recorder on, numbers the calls, hands out the places in the log and says which
// call is to fail.
//
// Everything in it is 32 bits wide and aligned, so that 32-bit and 64-bit programs share it and
// every field can be changed atomically.
#pragma once

#include <cstdint>

namespace quillmar::recorder {

inline constexpr char kControlFile[] = "control.bin";
inline constexpr char kLogFile[] = "calls.log";
inline constexpr char kControlMagic[8] = {'Q', 'M', 'T', 'R', 'A', 'C', 'E', '\0'};
inline constexpr std::uint32_t kControlVersion = 1;

struct ControlBlock {
  char magic[8];
  std::uint32_t version;
  std::uint32_t recording;  // nonzero: calls are written to the log
  std::uint32_t calls;      // number of the last recorded call
  std::uint32_t logLength;  // bytes of the log handed out so far
  std::uint32_t textLimit;  // characters of a text that are shown, 0: all
  std::uint32_t startLow;   // microseconds of the system clock when the trace began
  std::uint32_t startHigh;
  std::uint32_t countedKinds;  // Kind bits of the calls that are counted, 0: none
  std::uint32_t counted;       // how many counted calls were made
  std::uint32_t failAt;        // number of the counted call that fails, from 1; 0: none
  std::uint32_t failLater;     // nonzero: all counted calls after it fail too
  std::uint32_t failed;        // how many calls were made to fail
  char countedCaller[64];      // only calls from this module count; empty: from any
};
static_assert(sizeof(ControlBlock) == 120);

}  // namespace quillmar::recorder
