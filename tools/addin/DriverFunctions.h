// The functions of the CAD driver as a table, and calls of any of them with arguments of one
// pattern.
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <vector>

namespace tools {

// A buffer of which it can be told afterwards whether somebody wrote beyond its end.
class GuardedBuffer {
 public:
  // Room for `capacity` characters and a NUL.
  explicit GuardedBuffer(std::size_t capacity);
  char* Get() { return bytes.data(); }
  bool IsOverrun() const;
  // False when no NUL stands within the room.
  bool IsTerminated() const;
  // Up to the first NUL within the room; the whole room when there is none.
  std::string Text() const;

 private:
  std::size_t room;
  std::vector<char> bytes;
};

struct Pattern {
  const char* name;
  bool hasPointers;  // false: every pointer is null
  std::string text;  // every text
  int number;        // every integer
};

// What the pointers of one call lead to.
struct CallMemory {
  // A new buffer of so many bytes, with an empty text in it.
  char* Buffer(std::size_t bytes);
  bool IsOverrun() const;
  bool IsTerminated() const;

  std::deque<GuardedBuffer> buffers;
  std::deque<int> sizes;
  std::deque<std::vector<double>> reals;
  std::deque<unsigned> windows;
};

struct DriverFunction {
  const char* name;
  bool isRequired;
  bool isDrawing;  // bound by Set2dFileType
  // Bytes of its text buffers that have a size of their own, in the order of its arguments; 0: a
  // list buffer. Any further one is a list buffer too.
  std::array<std::size_t, 2> fixedBuffers;
  int (*invoke)(void* address, const DriverFunction& function, const Pattern& pattern,
                CallMemory& memory);

  int Call(void* address, const Pattern& pattern, CallMemory& memory) const {
    return invoke(address, *this, pattern, memory);
  }
};

std::span<const DriverFunction> DriverFunctions();
const DriverFunction* FindDriverFunction(const std::string& name);

}  // namespace tools
