#include "Machine.h"
#include "platform/native/Machine.h"

namespace quillmar::contract {

std::filesystem::path OwnPath(const std::string& windowsPath) {
  return platform::Machine::Current().HostPath(windowsPath);
}

}  // namespace quillmar::contract
