// Salvora.exe: the companion program that a login may wait for. It shows nothing and ends at once.
// Only the module starts it.
#include <tuple>

#include "recorder/Recorder.h"

namespace {

constexpr quillmar::recorder::Border border{"Salvora", quillmar::recorder::Kind::Program};

}  // namespace

int main(int argumentCount, char** arguments) {
  const char* commandLine = argumentCount > 1 ? arguments[1] : "";
  using quillmar::recorder::Caller;
  return border.Call(
      "Salvora", Caller::Named("Quillmar"), [] { return 0; }, 1, std::tie(commandLine));
}
