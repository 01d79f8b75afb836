#include "Machine.h"

namespace quillmar::contract {

const bool kClockCanBeSet = false;
const bool kHostIsAProcess = true;

std::filesystem::path OwnPath(const std::string& windowsPath) { return windowsPath; }

void EndWait() {}

}  // namespace quillmar::contract
