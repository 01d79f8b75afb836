// Identifiers of eight base-36 characters: seven digits of the clock, one of the machine.
#pragma once

#include <string>

namespace quillmar {

class UniqueIds {
 public:
  // Never the identifier made last; waits for the clock when it would be. A prefix that is not
  // empty goes in front, behind "PROF".
  std::string MakeUniqueId(const std::string& prefix);

 private:
  std::string last;
};

}  // namespace quillmar
