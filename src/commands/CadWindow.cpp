#include "commands/CadWindow.h"

namespace quillmar {

void BringCadToFront(const PartServices& services) {
  if (!services.session.noActivation) ActivateCad(services);
}

void ActivateCad(const PartServices& services) {
  services.protocols.activator.ActivateByHelper(WindowForActivation(services.driver));
}

}  // namespace quillmar
