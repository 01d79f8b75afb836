// Bill-of-materials tags that the CAD add-in registered: under which group and name of the CAD an
// entry of the user's tag list is stored.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace quillmar {

class BomTags {
 public:
  // Maps `key` to "<group>\<name>"; a later call with the same key wins.
  void AddBomTag(const std::string& group, const std::string& name, const std::string& key);
  // Where entries go that nobody registered.
  void SetDefaultUserSection(const std::string& section) { defaultUserSection = section; }

  // Name under which the CAD stores `entry`: the entry itself as long as no tag was registered.
  std::string NameInCad(const std::string& entry) const;

  // Keys in the order in which they were registered.
  const std::vector<std::string>& Keys() const { return keys; }

  // Forgets all registered tags.
  void Clear();

 private:
  std::vector<std::string> keys;
  std::map<std::string, std::string> names;  // by key
  std::string defaultUserSection;
};

}  // namespace quillmar
