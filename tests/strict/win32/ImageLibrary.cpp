#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "CoreLink.h"

namespace quillmar::strict {

void* ImageLibrary(const char* path) {
  std::string full = std::string("C:/") + path;
  std::replace(full.begin(), full.end(), '/', '\\');
  const HMODULE library = LoadLibraryA(full.c_str());
  if (library == nullptr) {
    std::fprintf(stderr, "strict companions: no %s (error %lu)\n", full.c_str(), GetLastError());
    std::abort();
  }
  return library;
}

void* FunctionOf(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace quillmar::strict
