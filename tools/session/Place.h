// Where the session runs: its machine and the system around it. Two backends, chosen by the build.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace session {

// Makes the image that this program lies in the machine of the process.
void EnterImage();

// Path in the system of a path on the machine.
std::filesystem::path SystemPath(const std::string& windowsPath);

// Files of the system, such as those named on the command line.
std::optional<std::string> ReadSystemFile(const std::string& path);
bool WriteSystemFile(const std::string& path, std::string_view contents);
std::string JoinSystemPath(const std::string& folder, const std::string& name);

bool OutputIsTerminal();

}  // namespace session
