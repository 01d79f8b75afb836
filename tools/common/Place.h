// Where a tool runs: its machine and the system around it. Two backends, chosen by the build.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

// Makes the image that this program lies in the machine of the process.
void EnterOwnImage();
// Makes the image in a folder of the system (it holds drive_c) the machine of the process; false
// when there is none. On Windows drive C: is the image already, and the folder is not looked at.
bool EnterImage(const std::string& folder);

// A text of the command line in the code page of the machine; nothing when it has no place there.
std::optional<std::string> TextOfArgument(const std::string& argument);

// Path in the system of a path on the machine.
std::filesystem::path SystemPath(const std::string& windowsPath);

// Files of the system, such as those named on the command line. What was written is on the disk
// when true comes back: as a whole under its name, or, appended, behind what was there.
std::optional<std::string> ReadSystemFile(const std::string& path);
bool WriteSystemFile(const std::string& path, std::string_view contents);
bool AppendSystemFile(const std::string& path, std::string_view contents);
std::string JoinSystemPath(const std::string& folder, const std::string& name);

enum class Stream { Output, Errors };
bool IsTerminal(Stream stream);
// Characters of a line of the terminal; 80 when it does not say.
int TerminalWidth();

}  // namespace tools
