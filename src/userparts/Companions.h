// How the wizards are started, and where they find what they work on.
#pragma once

#include <string>

namespace quillmar {

// Starts a program of a folder with a parameter, which becomes the rest of its command line as it
// is, and does not wait for it. False when it could not be started.
bool StartWithParameter(const std::string& folder, const std::string& program,
                        const std::string& parameter);

// The system's temporary folder, with one trailing backslash.
std::string TempFolderPath();

}  // namespace quillmar
