// Which protocols the text of an incoming link refers to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmar::keellink {

// Protocol identifiers, each once, in the order in which they were met.
class ParentList {
 public:
  // A protocol link is "<identifier>@<what of it>", or the identifier alone. In the expression of a
  // parameter link ("#" stands first) every word directly in front of an "@" is an identifier.
  void AddParentsOf(std::string_view linkText);

  // Joined by ",".
  std::string Joined() const;

 private:
  void Add(std::string_view id);

  std::vector<std::string> ids;
};

}  // namespace quillmar::keellink
