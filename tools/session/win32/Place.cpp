#include "session/Place.h"

#include <io.h>

#include "drawboard/DriveFiles.h"

namespace session {

// Drive C: is the image already.
void EnterImage() {}

std::filesystem::path SystemPath(const std::string& windowsPath) { return windowsPath; }

std::optional<std::string> ReadSystemFile(const std::string& path) {
  return drawboard::ReadWholeFile(path);
}

bool WriteSystemFile(const std::string& path, std::string_view contents) {
  return drawboard::WriteWholeFile(path, contents);
}

std::string JoinSystemPath(const std::string& folder, const std::string& name) {
  return folder + "\\" + name;
}

bool OutputIsTerminal() { return _isatty(1) != 0; }

}  // namespace session
