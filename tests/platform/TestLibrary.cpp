// A library with the module's entry point. It notes what it is told in "TestLibrary.ini" of the
// Windows folder, and refuses to be loaded when it says so.
#include <stdexcept>

#include "platform/EntryPoint.h"
#include "platform/Modules.h"
#include "platform/Profile.h"

namespace {

using namespace quillmar::platform;

constexpr const char* kNotes = "TestLibrary.ini";
constexpr const char* kSection = "Library";

void Note(const std::string& event) {
  std::string events = ReadProfileText(kNotes, kSection, "Events", "", 256);
  if (!events.empty()) events += ' ';
  WriteProfileText(kNotes, kSection, "Events", (events + event).c_str());
}

// Its end shows whether the library's own objects live while it is told of the process's end.
struct Own {
  ~Own() { alive = false; }
  bool alive = true;
} own;

}  // namespace

namespace quillmar {

bool OnLibraryAttach(QmModule self) {
  std::string order = platform::ReadProfileText(kNotes, kSection, "Order", "", 64);
  Note(self != nullptr && self == platform::FindLoadedModule(QM_TEST_LIBRARY) ? "attach" : "?");
  if (order == "throw") throw std::runtime_error("order");
  return order != "refuse";
}

void OnLibraryDetach(bool processEnding) {
  Note(std::string(own.alive ? "" : "late ") + (processEnding ? "end" : "unload"));
}

}  // namespace quillmar

extern "C" {
QM_EXPORT int QmTestAnswer(void);
int QmTestAnswer(void) { return 42; }
}
