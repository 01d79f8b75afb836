#include "FailingAllocations.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include "LiveBlocks.h"

using quillmar::contract::allocations;
using quillmar::contract::Origin;

quillmar::contract::Allocations quillmar::contract::allocations;

namespace {

constexpr int kMostFrames = 40;

std::atomic<long> liveBlocks = 0;

Origin Find(void* frame) {
  Dl_info info;
  if (::dladdr(frame, &info) == 0) return Origin::Elsewhere;
  const char* slash = std::strrchr(info.dli_fname, '/');
  const std::string_view file = slash != nullptr ? slash + 1 : info.dli_fname;
  if (file == "Quillmar.dll") return Origin::Library;
  if (file.starts_with("libquillmar_platform")) return Origin::Platform;
  return file.starts_with("libstdc++") || file.starts_with("contract") ? Origin::Between
                                                                       : Origin::Elsewhere;
}

Origin OriginOf(void* frame) {
  auto& known = allocations.origins;
  const auto found = known.find(frame);
  return found != known.end() ? found->second : known.emplace(frame, Find(frame)).first->second;
}

// The first that is neither the standard library nor this program's operator new. The platform
// counts as the library where the library called it: on Windows it is a part of it.
bool IsMadeByTheLibrary() {
  void* frames[kMostFrames];
  const int count = ::backtrace(frames, kMostFrames);
  bool inPlatform = false;
  for (int i = 0; i < count; ++i) {
    const Origin origin = OriginOf(frames[i]);
    if (origin == Origin::Library) return true;
    if (origin == Origin::Platform) {
      inPlatform = true;
    } else if (inPlatform || origin == Origin::Elsewhere) {
      return false;
    }
  }
  return false;
}

bool MustFail() {
  if (!allocations.armed || ++allocations.count < allocations.failing) return false;
  if (allocations.failing == 0 || (allocations.failed != 0 && !allocations.fromThenOn))
    return false;
  allocations.armed = false;  // looking for the caller allocates
  const bool isOurs = IsMadeByTheLibrary();
  allocations.armed = true;
  if (isOurs && allocations.failed == 0) allocations.failed = allocations.count;
  return isOurs;
}

}  // namespace

std::optional<long> quillmar::contract::LiveBlocks() { return liveBlocks; }

void* operator new(std::size_t size) {
  void* block = MustFail() ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  ++liveBlocks;
  return block;
}
void operator delete(void* block) noexcept {
  if (block != nullptr) --liveBlocks;
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
