#include "commands/CadWindow.h"

namespace quillmar {

void BringCadToFront(const PartServices& services) {
  if (services.session.noActivation) return;
  services.protocols.activator.ActivateByHelper(WindowForActivation(services.driver));
}

}  // namespace quillmar
