// Names of sections and keywords: equal without regard to case, by the system code page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmar::keelcomm {

// The name with every letter in upper case: the form in which names are compared and stored as
// keys.
std::string FoldedName(std::string_view name);

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const;
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};

}  // namespace quillmar::keelcomm
