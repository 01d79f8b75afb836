// A library with the module's entry point that reports to the program which loads it.
#include <windows.h>

#include <stdexcept>

#include "Child.h"
#include "platform/EntryPoint.h"
#include "platform/Modules.h"

namespace {

char Tell(char event) {
  using Event = char (*)(char);
  void* noted = quillmar::platform::FindFunction(GetModuleHandleA(nullptr), QM_CHILD_EVENT);
  return reinterpret_cast<Event>(noted)(event);
}

}  // namespace

namespace quillmar {

bool OnLibraryAttach(QmModule self) {
  const bool isThis = platform::FindLoadedModule(QM_CHILD_LIBRARY) == self;
  const char verdict = Tell(isThis ? 'A' : '?');
  if (verdict == 't') throw std::runtime_error("attach");
  return verdict == 'a';
}

void OnLibraryDetach(bool processEnding) { Tell(processEnding ? 'E' : 'D'); }

}  // namespace quillmar
