#include "bom/TagVocabulary.h"

#include <cstring>

#include "base/InstallationPaths.h"
#include "base/RegistryKey.h"
#include "platform/Profile.h"

namespace quillmar {
namespace {

constexpr const char* kBuiltIn[] = {"BOM1",   "BOM2",     "BOM3",    "Mass",      "CBFName",
                                    "SizeID", "UniqueID", "Caption", "ModelName", "Subtype"};
constexpr const char* kSettingsSection = "Settings";
constexpr const char* kMaterialSection = "MatDB";
constexpr const char* kNamesSection = "Names";
constexpr int kFirstMaterialField = 10;
constexpr int kDefaultMaterialFields = 3;
// A file that counts more fields or names than this is damaged.
constexpr int kMostFields = 1000;
constexpr std::size_t kTextSize = 1024;
constexpr std::size_t kKeyListSize = 32768;

std::vector<std::string> KeysOf(const std::string& file, const char* section) {
  std::string list(kKeyListSize, '\0');
  const std::size_t length =
      platform::GetProfileText(file, section, nullptr, "", list.data(), list.size());
  std::vector<std::string> keys;
  for (const char* key = list.data(); key < list.data() + length && *key != '\0';
       key += std::strlen(key) + 1) {
    keys.emplace_back(key);
  }
  return keys;
}

bool HasMaterialDatabase() {
  RegistryKey key;
  return key.Open(platform::Hive::CurrentUser, GetModuleRegistryKey(true) + "Fendrake\\MatDb") &&
         key.ReadDword("UseMatDB") == 1;
}

void AppendMaterialFields(const std::string& file, std::vector<OfferedTag>& tags) {
  const int count =
      platform::ReadProfileInt(file, kMaterialSection, "UserCount", kDefaultMaterialFields);
  for (int i = 0; i < count && i < kMostFields; ++i) {
    const std::string key = "BOM" + std::to_string(kFirstMaterialField + i);
    tags.push_back({key, platform::ReadProfileText(file, kNamesSection, key, key, kTextSize)});
  }
}

}  // namespace

std::vector<OfferedTag> OfferedTags(const std::string& extDataFile) {
  std::vector<OfferedTag> tags;
  for (const char* token : kBuiltIn) tags.push_back({token, token});
  for (const std::string& key : KeysOf(extDataFile, kSettingsSection)) tags.push_back({key, key});
  if (HasMaterialDatabase()) AppendMaterialFields(extDataFile, tags);
  return tags;
}

std::vector<std::string> HostExtendedDataNames(const std::string& hostIniFile) {
  std::vector<std::string> names;
  for (int i = 1; i <= kMostFields; ++i) {
    std::string name =
        platform::ReadProfileText(hostIniFile, "BOMDATAEX", std::to_string(i), "", kTextSize);
    if (name.empty()) break;
    names.push_back(std::move(name));
  }
  return names;
}

}  // namespace quillmar
