// Where the library that calls this lies: each library that links this has its own copy.
#pragma once

#include <string>

namespace quillmar::companion {

// Windows path of the file of this library; empty for a file outside the machine.
std::string ThisModulePath();

// The folder of that file, with a backslash at its end.
inline std::string ThisModuleFolder() {
  const std::string path = ThisModulePath();
  return path.substr(0, path.find_last_of('\\') + 1);
}

}  // namespace quillmar::companion
