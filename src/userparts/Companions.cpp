#include "userparts/Companions.h"

#include "naming/SafeFileName.h"
#include "platform/Processes.h"
#include "platform/System.h"

namespace quillmar {

std::string CompanionFolder(const PartServices& services) {
  std::string folder = services.host.CallText(QM_HOST_COMPANION_FOLDER, {});
  while (!folder.empty() && folder.back() == '\\') folder.pop_back();
  return folder.empty() ? services.paths.GetSuiteFolder() : folder;
}

bool StartWithParameter(const std::string& folder, const std::string& program,
                        const std::string& parameter) {
  const std::string path = folder + "\\" + program;
  return platform::StartProgram({.program = path,
                                 .commandLine = "\"" + path + "\" " + parameter,
                                 .folder = "",
                                 .show = platform::ShowMode::Normal})
      .has_value();
}

std::string TempFolderPath() {
  std::string folder = platform::TempFolder();
  EnsureTrailingBackslash(folder);
  return folder;
}

}  // namespace quillmar
