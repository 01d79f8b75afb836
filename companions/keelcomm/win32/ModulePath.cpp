#include "keelcomm/ModulePath.h"

#include <windows.h>

#include "platform/Modules.h"

namespace quillmar::companion {

std::string ThisModulePath() {
  HMODULE module = nullptr;
  constexpr DWORD flags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExA(flags, reinterpret_cast<LPCSTR>(&ThisModulePath), &module)) return {};
  return platform::ModulePath(module);
}

}  // namespace quillmar::companion
