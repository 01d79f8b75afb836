// Libraries of the process as the host's loader knows them.
#pragma once

#include <filesystem>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

// The program that runs in this process.
std::filesystem::path ProgramHostPath();

// The module whose code or data lies at the address; null when there is none. No reference is
// taken.
QmModule ModuleAt(const void* address);

// Host path of a module's file; empty when unknown. Null means the program itself.
std::filesystem::path HostPathOf(QmModule module);

}  // namespace quillmar::platform
