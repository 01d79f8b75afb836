#include "platform/native/ProfileCache.h"

#include <algorithm>
#include <utility>

namespace quillmar::platform {
namespace {

constexpr std::size_t kKeptFiles = 10;

}  // namespace

std::shared_ptr<const ProfileFile> ProfileCache::Get(const std::string& file) {
  std::lock_guard guard(mutex);
  auto known = std::find_if(entries.begin(), entries.end(),
                            [&](const Entry& entry) { return entry.name == file; });
  if (known != entries.end()) {
    entries.splice(entries.begin(), entries, known);
    const Entry& entry = entries.front();
    if (StampOf(entry.path).SameAs(entry.stamp)) {
      // A file of just that name is the one that is meant, whatever else has come.
      const bool isMeant = (entry.exact && entry.stamp.exists) || paths.ToHost(file) == entry.path;
      if (isMeant) return entry.file;
    }
    entries.pop_front();
  }
  const std::filesystem::path path = paths.ToHost(file);
  std::optional<FileContents> contents = ReadFile(path);
  if (!contents) return std::make_shared<const ProfileFile>();
  auto parsed = std::make_shared<const ProfileFile>(contents->bytes);
  entries.push_front({file, path, paths.NamesExactly(file, path), contents->stamp, parsed});
  if (entries.size() > kKeptFiles) entries.pop_back();
  return parsed;
}

}  // namespace quillmar::platform
