#include "keelcomm/ModulePath.h"

#include <dlfcn.h>

#include "platform/native/Machine.h"

namespace quillmar::companion {
namespace {

std::string OwnHostPath() {
  Dl_info info;
  const auto* self = reinterpret_cast<const void*>(&ThisModulePath);
  return ::dladdr(self, &info) == 0 ? std::string() : info.dli_fname;
}

// The library belongs to the machine of its image from load to unload.
class ImageMembership {
 public:
  ImageMembership() : isMember(platform::AttachToImage(OwnHostPath())) {}
  ~ImageMembership() {
    if (isMember) platform::DetachFromImage();
  }
  ImageMembership(const ImageMembership&) = delete;
  ImageMembership& operator=(const ImageMembership&) = delete;

 private:
  bool isMember;
};

const ImageMembership membership;

}  // namespace

std::string ThisModulePath() { return platform::Machine::Current().WindowsPath(OwnHostPath()); }

}  // namespace quillmar::companion
