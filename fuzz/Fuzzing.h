// What the fuzzers share. Each defines LLVMFuzzerTestOneInput.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "InstantCompanions.h"
#include "ModuleWorld.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quillmar::fuzz {

// What always holds, whatever the input is.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", what);
  std::abort();
}

inline std::string_view Input(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Up to the first `mark`, which is taken away with it; all of it when there is none.
inline std::string_view TakeUntil(std::string_view& input, char mark) {
  const std::string_view front = input.substr(0, input.find(mark));
  input.remove_prefix(std::min(input.size(), front.size() + 1));
  return front;
}

}  // namespace quillmar::fuzz
