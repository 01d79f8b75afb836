#include "commands/WorkingCopy.h"

namespace quillmar {

WorkingCopy::WorkingCopy(const PartServices& owner) : services(owner), protocol(owner.protocols) {}

WorkingCopy::~WorkingCopy() {
  if (kept) return;
  try {
    Discard();
  } catch (...) {
    // Without memory for a report the copy stays; nothing may leave a destructor.
  }
}

bool WorkingCopy::Open(const std::string& reference, bool activate, Markers markers) {
  return protocol.OpenFromReference(reference, activate, markers) != 0;
}

std::string WorkingCopy::Keep() {
  const std::string id = protocol.GetProtocolID();
  kept = true;
  protocol.Close();
  return id;
}

void WorkingCopy::Discard() {
  if (services.session.groupManager || !protocol.IsReady()) return;
  kept = true;  // nothing is left to undo
  protocol.Erase();
}

}  // namespace quillmar
