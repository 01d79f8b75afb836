// How a call is made to fail.
#pragma once

namespace quillmar::test {

enum class Mode { Once, FromThenOn };

}  // namespace quillmar::test
