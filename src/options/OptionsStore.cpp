#include "options/OptionsStore.h"

#include <utility>

#include "base/RegistryKey.h"
#include "platform/System.h"

namespace quillmar {
namespace {

constexpr const char* kGeneral = "OptGeneral";
constexpr const char* kBom = "OptBom";
constexpr const char* kKc = "OptKC";

constexpr std::string_view kUserTagPrefix = "User_";
constexpr std::size_t kLongestTagText = 1024;
// The picture size is held without the frame around the picture.
constexpr int kPictureFrame = 16;
constexpr int kDefaultPictureSize = 72;

struct FlagRow {
  const char* section;
  const char* name;
};

// Flags 1 to 9.
constexpr FlagRow kFlags[] = {
    {kGeneral, "Show2"},
    {kGeneral, "HideTreeOption"},
    {kGeneral, "HideLocalFile"},
    {kGeneral, "HideSharedFile"},
    {kGeneral, "NoDefaultFileNames"},
    {kGeneral, "HideReplaceFileSpaces"},
    {kBom, "HideReplaceCaptionSpaces"},
    {kGeneral, "SharedFilesToAsm"},
    {kGeneral, "HideLocalPartQuestion"},
};

bool IsUserTag(const std::string& valueName) {
  return valueName.size() >= kUserTagPrefix.size() &&
         platform::EqualsNoCase(valueName.substr(0, kUserTagPrefix.size()), kUserTagPrefix);
}

// Appends the tags that a hive holds for the user; true when it holds any text at all.
bool AppendTags(platform::Hive hive, const std::string& path, std::vector<BomTag>& tags) {
  RegistryKey key;
  if (!key.Open(hive, path)) return false;
  bool anyText = false;
  for (std::uint32_t index = 0; const auto entry = key.EnumValue(index); ++index) {
    if (entry->value.type != platform::RegistryType::Text) continue;
    const std::string text = entry->value.data.c_str();  // up to the first NUL
    if (text.size() > kLongestTagText) continue;
    anyText = true;
    if (IsUserTag(entry->name)) tags.push_back({entry->name.substr(kUserTagPrefix.size()), text});
  }
  return anyText;
}

}  // namespace

OptionsStore::OptionsStore(std::string sheetTitle, std::string optionsKey) {
  Replace(std::move(sheetTitle), std::move(optionsKey));
}

void OptionsStore::Replace(std::string sheetTitle, std::string optionsKey) {
  title = std::move(sheetTitle);
  key = std::move(optionsKey);
  ReadFlags();
  ReadConfiguration();
}

void OptionsStore::ReadFlags() {
  static_assert(std::size(kFlags) == std::tuple_size_v<decltype(flags)>);
  for (std::size_t i = 0; i < flags.size(); ++i) {
    flags[i] = ReadOptionInt(kFlags[i].section, kFlags[i].name, 0) == 1;
  }
}

void OptionsStore::ReadConfiguration() {
  captionTemplate = ReadOptionText(kBom, "TitleExt", "%Caption%");
  upperCase = ReadOptionInt(kBom, "MakeUpperCase", 0) == 1;
  replaceSpaces = ReadOptionInt(kBom, "ReplaceSpaces", 0);
  ReadTags();
  kcWindow.showCheckActivate = ReadOptionInt(kKc, "ShowCheckActivate", 0) != 0;
  kcWindow.activateWindow = ReadOptionInt(kKc, "ActivateWindow", 0) != 0;
  kcWindow.pictureSize = ReadOptionInt(kKc, "PicSize", kDefaultPictureSize) - kPictureFrame;
  kcWindow.showText = ReadOptionInt(kKc, "ShowText", 1) != 0;
  kcWindow.iconView = ReadOptionInt(kKc, "IconView", 1) != 0;
  kcWindow.useWindow = ReadOptionInt(kKc, "UseKCWindow", 1) != 0;
}

// Any text in the user's section, a tag or not, hides the machine's tags.
void OptionsStore::ReadTags() {
  tags.clear();
  defaultTags = false;
  const std::string path = key + "\\" + kBom;
  if (!AppendTags(platform::Hive::CurrentUser, path, tags)) {
    AppendTags(platform::Hive::LocalMachine, path, tags);
  }
}

std::string OptionsStore::ReadOptionText(const std::string& section, const std::string& name,
                                         const std::string& fallback) const {
  std::string text;
  const bool read = RegistryKey::ReadStringUserThenMachine(key + "\\" + section, name, text);
  return read ? text : fallback;
}

int OptionsStore::ReadOptionInt(const std::string& section, const std::string& name,
                                int fallback) const {
  std::uint32_t value = 0;
  const bool read = RegistryKey::ReadDwordUserThenMachine(key + "\\" + section, name, value);
  return read ? static_cast<int>(value) : fallback;
}

void OptionsStore::WriteOptionText(const std::string& section, const std::string& name,
                                   const std::string& text) const {
  RegistryKey target;
  if (target.Create(platform::Hive::CurrentUser, key + "\\" + section)) {
    target.WriteString(name, text);
  }
}

void OptionsStore::WriteOptionInt(const std::string& section, const std::string& name,
                                  int value) const {
  RegistryKey target;
  if (target.Create(platform::Hive::CurrentUser, key + "\\" + section)) {
    target.WriteDword(name, static_cast<std::uint32_t>(value));
  }
}

void OptionsStore::DeleteSection(const std::string& section) const {
  RegistryKey target;
  if (target.Open(platform::Hive::CurrentUser, key + "\\" + section)) target.DeleteKey();
}

}  // namespace quillmar
