#include "bom/BomTags.h"

namespace quillmar {

void BomTags::AddBomTag(const std::string& group, const std::string& name, const std::string& key) {
  keys.push_back(key);
  names[key] = group + "\\" + name;
}

void BomTags::Clear() {
  keys.clear();
  names.clear();
}

std::string BomTags::NameInCad(const std::string& entry) const {
  if (names.empty()) return entry;
  const auto found = names.find(entry);
  return found != names.end() ? found->second : defaultUserSection + "\\" + entry;
}

}  // namespace quillmar
