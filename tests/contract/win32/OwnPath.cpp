#include "Machine.h"

namespace quillmar::contract {

std::filesystem::path OwnPath(const std::string& windowsPath) { return windowsPath; }

void EndWait() {}

}  // namespace quillmar::contract
