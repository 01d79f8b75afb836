#include "platform/native/ProfileCache.h"

#include <algorithm>
#include <utility>

namespace quillmar::platform {
namespace {

constexpr std::size_t kKeptFiles = 10;

}  // namespace

std::shared_ptr<const ProfileFile> ProfileCache::Get(const std::filesystem::path& path) {
  std::lock_guard guard(mutex);
  auto known = std::find_if(entries.begin(), entries.end(),
                            [&](const Entry& entry) { return entry.path == path; });
  if (known != entries.end()) {
    entries.splice(entries.begin(), entries, known);
    if (StampOf(path).SameAs(entries.front().stamp)) return entries.front().file;
    entries.pop_front();
  }
  std::optional<FileContents> contents = ReadFile(path);
  if (!contents) return std::make_shared<const ProfileFile>();
  auto file = std::make_shared<const ProfileFile>(contents->bytes);
  entries.push_front({path, contents->stamp, file});
  if (entries.size() > kKeptFiles) entries.pop_back();
  return file;
}

}  // namespace quillmar::platform
