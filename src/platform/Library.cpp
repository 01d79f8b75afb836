#include "platform/Modules.h"

namespace quillmar::platform {

Library& Library::operator=(Library&& other) noexcept {
  if (this != &other) {
    Free();
    module = other.Release();
  }
  return *this;
}

QmModule Library::Release() {
  QmModule released = module;
  module = nullptr;
  return released;
}

}  // namespace quillmar::platform
