// Why the CAD refused something. Thrown by operations, caught at the border of the add-in, where
// it becomes result 0 and a line of messages.
#pragma once

#include <stdexcept>
#include <string>

namespace drawboard {

class BoardError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace drawboard
