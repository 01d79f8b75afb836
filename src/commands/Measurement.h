// A value that a calculation wants to have measured in the CAD: the request, and the value on its
// way back.
#pragma once

#include <optional>
#include <string>

#include "calclink/IpcLibrary.h"
#include "parts/PartServices.h"

namespace quillmar {

// One for the process. The protocol of the last request stays open until the next one, because the
// user may measure several times.
class Measurement {
 public:
  Measurement(const PartServices& services, const IpcLibrary& ipc);

  // Lets the user measure in the unit that the calculation's protocol names.
  void Request(const std::string& protocolId);
  // Hands the value to the calculation that waits for it; without one nothing happens.
  void SetValue(double value);
  // Lets go of the protocol.
  void Release() { waiting.reset(); }

 private:
  bool Reopen();

  const PartServices& services;
  const IpcLibrary& ipc;
  std::optional<VXProtocol> waiting;
};

}  // namespace quillmar
