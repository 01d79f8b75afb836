// How a call is made to fail.
#pragma once

namespace quillmar::test {

enum class Mode { Once, FromThenOn };

// The end of a test's name.
constexpr const char* NameOf(Mode mode) {
  return mode == Mode::Once ? "FailsOnce" : "FailsFromThenOn";
}

}  // namespace quillmar::test
