#include "hexaplan/host/HostFaults.h"

#include "platform/Files.h"
#include "platform/Profile.h"

namespace hexaplan {

namespace platform = quillmar::platform;

bool HostFaults::NeverReady() const {
  return platform::FileExists(file) && platform::ReadProfileInt(file, "Faults", "NotReady", 0) == 1;
}

bool HostFaults::DiesIn(int method) const {
  return platform::FileExists(file) &&
         platform::ReadProfileInt(file, "Faults", "DieInMethod", 0) == method;
}

}  // namespace hexaplan
