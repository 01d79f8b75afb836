#include "support/DebuggerOutput.h"

#include <utility>

#include "platform/native/Machine.h"

struct DebuggerOutput::Backend {};

DebuggerOutput::DebuggerOutput() { Take(); }
DebuggerOutput::~DebuggerOutput() = default;

std::vector<std::string> DebuggerOutput::Take() {
  return std::exchange(quillmar::platform::Machine::Current().DebugLines(), {});
}
