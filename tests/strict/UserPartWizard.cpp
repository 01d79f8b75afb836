// The strict wizards: show nothing and note what they were started with beside themselves.
#include "platform/Modules.h"
#include "platform/Profile.h"

int main(int argumentCount, char** arguments) {
  namespace platform = quillmar::platform;
  const std::string own = platform::ModulePath(nullptr);
  const std::string file = own.substr(0, own.rfind('.')) + ".ini";
  std::string parameter;
  for (int i = 1; i < argumentCount; ++i) {
    if (i > 1) parameter += ' ';
    parameter += arguments[i];
  }
  const std::string run = std::to_string(platform::ReadProfileInt(file, "Runs", "Count", 0) + 1);
  platform::WriteProfileText(file, run.c_str(), "Parameter", parameter.c_str());
  return platform::WriteProfileText(file, "Runs", "Count", run.c_str()) ? 0 : 1;
}
