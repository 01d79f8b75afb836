// The folder of the wizards and the generator, and how the wizards are started.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// Without a trailing backslash. Asks the calculation host, which is started when none runs.
std::string CompanionFolder(const PartServices& services);

// Starts a program of a folder with a parameter, which becomes the rest of its command line as it
// is, and does not wait for it. False when it could not be started.
bool StartWithParameter(const std::string& folder, const std::string& program,
                        const std::string& parameter);

// The system's temporary folder, with one trailing backslash.
std::string TempFolderPath();

}  // namespace quillmar
