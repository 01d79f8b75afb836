// Orders for the calculation host: the inputs that a user would type into its dialog, as numbered
// files in the host's folder "Inputs", and the answers that the host writes into them.
#pragma once

#include <string>
#include <vector>

#include "session/Job.h"

namespace session {

struct Answer {
  enum class Result { Pending, Calculated, Refused };
  Result result = Result::Pending;
  std::vector<std::string> protocols;  // of the parts, when calculated
  std::string message;                 // why not, when refused
};

class Orders {
 public:
  // Removes the orders of earlier sessions from `folder`.
  explicit Orders(std::string folder);

  // Path of a new order for a calculation of that type, or, when `protocolId` is not empty, of
  // that protocol only. Empty when it could not be written.
  std::string Write(const std::string& calculation, const std::string& protocolId,
                    const Inputs& inputs);
  static Answer Read(const std::string& order);

 private:
  std::string folder;
  int last = 0;
};

}  // namespace session
