#include <algorithm>

#include "../CadAddin.h"

// Drive Z: is the root of the system that built the add-in.
std::string AddinPath() {
  std::string path = "Z:" ADDIN_FILE;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}
