#include "options/OptionsStore.h"

#include <utility>

#include "base/RegistryKey.h"
#include "platform/Messages.h"
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
constexpr unsigned kRereadSettings = 1113;  // what the KC window is told

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
    anyText = true;
    if (text.size() > kLongestTagText) continue;
    if (IsUserTag(entry->name)) tags.push_back({entry->name.substr(kUserTagPrefix.size()), text});
  }
  return anyText;
}

}  // namespace

OptionsStore::OptionsStore(std::string sheetTitle, std::string optionsKey) {
  Replace(std::move(sheetTitle), std::move(optionsKey));
}

void OptionsStore::Replace(std::string sheetTitle, std::string optionsKey, SheetExtras added) {
  title = std::move(sheetTitle);
  key = std::move(optionsKey);
  extras = std::move(added);
  pages = {ReadOptionInt(kGeneral, "Show", 1) == 1, ReadOptionInt(kBom, "Show", 1) == 1,
           ReadOptionInt(kKc, "Show", 1) == 1};
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
  edited.captionTemplate = ReadOptionText(kBom, "TitleExt", "%Caption%");
  edited.upperCase = ReadOptionInt(kBom, "MakeUpperCase", 0) == 1;
  edited.replaceSpaces = ReadOptionInt(kBom, "ReplaceSpaces", 0);
  ReadTags();
  KcWindowOptions& kc = edited.kcWindow;
  kc.showCheckActivate = ReadOptionInt(kKc, "ShowCheckActivate", 0) != 0;
  kc.activateWindow = ReadOptionInt(kKc, "ActivateWindow", 0) != 0;
  kc.pictureSize = ReadOptionInt(kKc, "PicSize", kDefaultPictureSize) - kPictureFrame;
  kc.showText = ReadOptionInt(kKc, "ShowText", 1) != 0;
  kc.iconView = ReadOptionInt(kKc, "IconView", 1) != 0;
  kc.useWindow = ReadOptionInt(kKc, "UseKCWindow", 1) != 0;
  kcWindowHandle = 0;
}

// Any text in the user's section, a tag or not, hides the machine's tags.
void OptionsStore::ReadTags() {
  edited.tags.clear();
  edited.defaultTags = false;
  const std::string path = key + "\\" + kBom;
  if (!AppendTags(platform::Hive::CurrentUser, path, edited.tags)) {
    AppendTags(platform::Hive::LocalMachine, path, edited.tags);
  }
}

std::vector<BomTag> OptionsStore::StoredDefaultTags() const {
  if (ReadOptionInt(kBom, "NotDefaultTags", 1) != 0) return {};
  RegistryKey section;
  if (!section.Open(platform::Hive::CurrentUser, key + "\\" + kBom)) return {};
  std::vector<BomTag> found;
  for (const char* text : kDefaultTagTexts) {
    for (std::uint32_t index = 0; const auto entry = section.EnumValue(index); ++index) {
      if (entry->value.type != platform::RegistryType::Text || IsUserTag(entry->name) ||
          entry->name == "TitleExt" || entry->value.data.c_str() != std::string_view(text)) {
        continue;
      }
      found.push_back({entry->name, text});
      break;
    }
  }
  return found;
}

void OptionsStore::Save(EditedOptions fresh) {
  edited = std::move(fresh);
  platform::RegistryBatch together(platform::Hive::CurrentUser);
  WriteBom();
  WriteKc();
  together.Commit();
  if (kcWindowHandle != 0 && platform::IsLiveWindow(kcWindowHandle)) {
    platform::SendToWindow(kcWindowHandle, kRereadSettings);
  }
}

bool OptionsStore::IsDefaultTag(std::size_t index) const {
  return edited.defaultTags && index < std::size(kDefaultTagTexts) &&
         edited.tags[index].text == kDefaultTagTexts[index];
}

void OptionsStore::WriteBom() const {
  DeleteSection(kBom);
  WriteOptionText(kBom, "TitleExt", edited.captionTemplate);
  WriteOptionInt(kBom, "ReplaceSpaces", edited.replaceSpaces);
  WriteOptionInt(kBom, "MakeUpperCase", edited.upperCase ? 1 : 0);
  WriteOptionInt(kBom, "NotDefaultTags", edited.defaultTags ? 0 : 1);
  WriteOptionInt(kBom, "HideReplaceCaptionSpaces", Flag(7) ? 1 : 0);
  for (std::size_t i = 0; i < edited.tags.size(); ++i) {
    const BomTag& tag = edited.tags[i];
    const std::string prefix(IsDefaultTag(i) ? std::string_view() : kUserTagPrefix);
    WriteOptionText(kBom, prefix + tag.name, tag.text);
  }
}

void OptionsStore::WriteKc() const {
  const KcWindowOptions& kc = edited.kcWindow;
  WriteOptionInt(kKc, "ActivateWindow", kc.activateWindow ? 1 : 0);
  WriteOptionInt(kKc, "PicSize", kc.pictureSize + kPictureFrame);
  WriteOptionInt(kKc, "ShowText", kc.showText ? 1 : 0);
  WriteOptionInt(kKc, "IconView", kc.iconView ? 1 : 0);
  WriteOptionInt(kKc, "UseKCWindow", kc.useWindow ? 1 : 0);
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
  if (name.empty()) return DeleteSection(section);
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
  target.Close();
  if (auto parent = platform::OpenKey(platform::Hive::CurrentUser, key)) {
    parent->DeleteSubKey(section);
  }
}

}  // namespace quillmar
