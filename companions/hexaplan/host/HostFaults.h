// Faults that a test asks of the host, in "HostFaults.ini" of its folder:
//
//   [Faults]
//   NotReady=1       the ready query never answers 1
//   DieInMethod=2    the host ends in the middle of the next call of that method
//
// A host method that fails is a matter of the recorder.
#pragma once

#include <string>

namespace hexaplan {

class HostFaults {
 public:
  explicit HostFaults(const std::string& folder) : file(folder + "\\HostFaults.ini") {}

  bool NeverReady() const;
  bool DiesIn(int method) const;

 private:
  std::string file;
};

}  // namespace hexaplan
