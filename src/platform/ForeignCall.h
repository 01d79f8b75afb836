// Calls into libraries of which it is not certain who removes the arguments, or how many of them
// they know.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>

namespace quillmar::platform {

// Calls `function` with `count` word-sized arguments and restores the stack pointer afterwards,
// whichever of caller and callee removed how many of them. Returns the result register; who
// expects a 16-bit result takes its lower half.
int CallForeign(void* function, const std::uintptr_t* words, std::size_t count);

// A word, or a real, which travels in each target's own way.
using ForeignArgument = std::variant<std::uintptr_t, double>;

// The same for functions that take reals among their arguments, four at most.
int CallForeign(void* function, std::span<const ForeignArgument> arguments);

inline std::uintptr_t Word(const void* pointer) {
  return reinterpret_cast<std::uintptr_t>(pointer);
}
inline std::uintptr_t Word(int value) {
  return static_cast<std::uintptr_t>(static_cast<std::intptr_t>(value));
}
inline std::uintptr_t Word(std::uint32_t value) { return value; }

}  // namespace quillmar::platform
