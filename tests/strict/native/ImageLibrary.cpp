#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "CoreLink.h"

namespace quillmar::strict {
namespace {

[[noreturn]] void Give(const std::string& reason) {
  std::fprintf(stderr, "strict companions: %s\n", reason.c_str());
  std::abort();
}

// <image>/drive_c of the image that this code was loaded from.
std::string DriveC() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&ImageLibrary), &info) == 0) Give("they know no path");
  const std::string path = std::filesystem::absolute(info.dli_fname).lexically_normal();
  const auto at = path.rfind("/drive_c/");
  if (at == std::string::npos) Give(path + " lies in no image");
  return path.substr(0, at) + "/drive_c/";
}

}  // namespace

void* ImageLibrary(const char* path) {
  void* library = dlopen((DriveC() + path).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (library == nullptr) Give(dlerror());
  return library;
}

void* FunctionOf(void* library, const char* name) { return dlsym(library, name); }

}  // namespace quillmar::strict
