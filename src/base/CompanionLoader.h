// How companion libraries are found.
#pragma once

#include <string>
#include <vector>

#include "platform/Modules.h"

namespace quillmar {

struct CompanionLoad {
  platform::Library library;
  std::uint32_t folderError = 0;  // code of the last try in `folders`
  std::uint32_t systemError = 0;  // code of the try in the system's folders
};

// Loads `fileName` from the first of `folders` that has it, else from the application's, the
// system's, the Windows and the PATH folders. Always by full path: a library that lies in the
// current folder is never taken.
CompanionLoad LoadCompanion(const std::vector<std::string>& folders, const std::string& fileName);

}  // namespace quillmar
