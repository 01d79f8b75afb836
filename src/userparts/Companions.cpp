#include "userparts/Companions.h"

#include "naming/SafeFileName.h"
#include "platform/Processes.h"
#include "platform/System.h"

namespace quillmar {

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
