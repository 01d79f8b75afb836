// The functions of the CAD driver as a table, and calls of any of them with arguments of one
// pattern.
#pragma once

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
  // Up to the first NUL within the room; the whole room when there is none.
  std::string Text() const;
  bool IsUntouched() const;

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
  std::deque<GuardedBuffer> buffers;
  std::deque<int> sizes;
  std::deque<std::vector<double>> reals;
  std::deque<unsigned> windows;
};

struct DriverFunction {
  const char* name;
  bool isRequired;
  bool isDrawing;  // bound by Set2dFileType
  int (*call)(void* function, const Pattern& pattern, CallMemory& memory);
};

std::span<const DriverFunction> DriverFunctions();
const DriverFunction* FindDriverFunction(const std::string& name);

}  // namespace tools
