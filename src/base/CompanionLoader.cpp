#include "base/CompanionLoader.h"

namespace quillmar {

CompanionLoad LoadCompanion(const std::vector<std::string>& folders, const std::string& fileName) {
  CompanionLoad load;
  for (const std::string& folder : folders) {
    // A folder that is not known leaves a path that begins with a backslash: it is no full path,
    // and the answer is that there is no such library.
    auto tried = platform::LoadLibraryAt(folder + "\\" + fileName);
    load.folderError = tried.error;
    if (tried.library) {
      load.library = std::move(tried.library);
      return load;
    }
  }
  auto tried = platform::LoadLibraryFromSystem(fileName);
  load.systemError = tried.error;
  load.library = std::move(tried.library);
  return load;
}

}  // namespace quillmar
