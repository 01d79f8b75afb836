#include "Toolbar.h"

#include "platform/native/Machine.h"

namespace quillmar::contract {

using platform::Machine;

bool IsShown(QmWindow window) { return Machine::Current().IsWindowVisible(window); }

bool IsEnabled(QmWindow window, int command) {
  return Machine::Current().IsCommandEnabled(window, command);
}

void Choose(QmWindow window, int command) { Machine::Current().ChooseCommand(window, command); }

void ShowFromOutside(QmWindow window) { Machine::Current().ShowWindowFromOutside(window, true); }

}  // namespace quillmar::contract
