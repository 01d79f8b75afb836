#include "wizard/WizardRun.h"

#include <tuple>

#include "platform/Modules.h"
#include "platform/Profile.h"
#include "recorder/Recorder.h"

namespace wizard {
namespace {

namespace platform = quillmar::platform;
namespace recorder = quillmar::recorder;

constexpr const char* kRuns = "Runs";
constexpr const char* kCount = "Count";

std::string Joined(int count, char** words) {
  std::string joined;
  for (int i = 1; i < count; ++i) {
    if (i > 1) joined += ' ';
    joined += words[i];
  }
  return joined;
}

std::string OwnPath() { return platform::ModulePath(nullptr); }

// The count is written last: who waits for it finds the run complete.
void LeaveRecord(const std::string& parameter, const std::string& refusal) {
  const std::string file = OwnPath().substr(0, OwnPath().rfind('.')) + ".ini";
  const std::string run = std::to_string(platform::ReadProfileInt(file, kRuns, kCount, 0) + 1);
  const auto put = [&](const char* section, const char* key, const std::string& value) {
    platform::WriteProfileText(file, section, key, value.c_str());
  };
  put(run.c_str(), "Parameter", parameter);
  put(run.c_str(), "Result", refusal.empty() ? "Accepted" : "Refused");
  if (!refusal.empty()) put(run.c_str(), "Message", refusal);
  put(kRuns, kCount, run);
}

}  // namespace

std::string OwnFolder() { return OwnPath().substr(0, OwnPath().rfind('\\')); }

int Run(const char* name, const char* starter, int argumentCount, char** arguments,
        const std::function<void(const std::string& parameter)>& check) {
  const recorder::Border border{name, recorder::Kind::Program};
  const std::string parameter = Joined(argumentCount, arguments);
  const char* shown = parameter.c_str();
  return border.Call(
      name, recorder::Caller::Named(starter),
      [&] {
        std::string refusal;
        try {
          check(parameter);
        } catch (const Refusal& wrong) {
          refusal = wrong.what();
          border.Note(refusal);
        }
        LeaveRecord(parameter, refusal);
        return refusal.empty() ? 0 : 1;
      },
      1, std::tie(shown));
}

}  // namespace wizard
