#include "options/FileNamePage.h"

#include "base/RegistryKey.h"
#include "options/DepthDialog.h"
#include "options/OptionsSheet.h"

namespace quillmar {
namespace {

using platform::FieldKind;
using platform::Form;
using platform::FormField;

constexpr const char* kSection = "OptGeneral2";
constexpr int kTemplate = 4004;
constexpr int kPageTitle = 4100;
constexpr int kSpacesControl = 101;  // three buttons
constexpr int kSpacesFrame = 104;
constexpr int kDepthsButton = 150;

// Parts of the page, as bits of the host's mask.
constexpr std::uint32_t kLocalItems = 1;
constexpr std::uint32_t kSharedItems = 2;
constexpr std::uint32_t kSpacesItem = 4;
constexpr std::uint32_t kStructureItem = 64;  // of the masks of one side

// Flags of the options that hide parts of the page.
constexpr int kHideLocalFile = 3;
constexpr int kHideSharedFile = 4;
constexpr int kHideReplaceFileSpaces = 6;

struct FolderRow {
  FolderType type;
  int text;
};

constexpr FolderRow kFolders[] = {
    {kAssemblyFolder, 4103},
    {kWorkspaceFolder, 4104},
    {kLibraryFolder, 4105},
    {kAskFolder, 4106},
    {kAskFile, 4107},
    {kUserFolder, 4108},
    {kContentLibraryFolder, 4109},
};

// Controls of a side, counted from its first.
enum SideControl {
  kFileName = 0,  // and its list of tags
  kFolderType = 2,
  kFolder = 3,
  kStructure = 4,
  kWorkspaceSubFolder = 5,
  kLibrary = 6,
  kLabels = 7  // a frame and five labels
};
constexpr int kLabelCount = 6;

struct TextRow {
  const char* value;
  int control;
};
constexpr TextRow kTexts[] = {{"FileName", kFileName},
                              {"Folder", kFolder},
                              {"WorkspaceSubFolder", kWorkspaceSubFolder},
                              {"Library", kLibrary}};

}  // namespace

// Local and shared parts have the same settings behind different words.
struct FileNamePage::Side {
  std::string prefix;
  int firstControl;
  std::uint32_t mask;
};

FileNamePage::FileNamePage(const OptionsStore& store, const LanguageTable& language,
                           const SheetOffers& sheetOffers)
    : options(store), texts(language), offers(sheetOffers) {
  settings.Use(options.Key() + "\\", offers.hostIniFile);
}

Form FileNamePage::MakeForm(const platform::DialogSurroundings& surroundings) const {
  Form form{.title = texts.GetText(kPageTitle), .dialogTemplate = kTemplate, .fields = {}};
  const std::uint32_t items = settings.Items();
  AddSide(form, {"Local", 110, settings.LocalPartsItems()},
          (items & kLocalItems) != 0 && !options.Flag(kHideLocalFile));
  AddSide(form, {"Shared", 130, settings.SharedPartsItems()},
          (items & kSharedItems) != 0 && !options.Flag(kHideSharedFile));
  const int rule = options.ReadOptionInt(kSection, "ReplaceSpaces", 0);
  form.fields.push_back(
      {.kind = FieldKind::Radio,
       .name = "OptGeneral2.ReplaceSpaces",
       .control = kSpacesControl,
       .number = rule == 0 || rule == 1 ? rule : 2,
       .items = {"0", "1", "2"},
       .shown = (items & kSpacesItem) != 0 && !options.Flag(kHideReplaceFileSpaces),
       .companions = {kSpacesFrame}});
  // The scans themselves ask nothing, since programs start them, too. The depths are a dialog of
  // their own: what was confirmed there holds, however the sheet ends.
  form.fields.push_back({.kind = FieldKind::Button,
                         .name = "OptGeneral.Depths",
                         .control = kDepthsButton,
                         .press = [this, &surroundings](QmWindow page) {
                           AskDepths(options, texts, {surroundings.resources, page});
                         }});
  return form;
}

void FileNamePage::AddSide(Form& form, const Side& side, bool shown) const {
  for (const TextRow& row : kTexts) {
    const std::string value = side.prefix + row.value;
    FormField field{.kind = FieldKind::Text,
                    .name = "OptGeneral2." + value,
                    .control = side.firstControl + row.control,
                    .text = options.ReadOptionText(kSection, value, ""),
                    .shown = shown};
    if (row.control == kFileName) field.items = offers.tags;
    form.fields.push_back(std::move(field));
  }
  FormField type{.kind = FieldKind::Choice,
                 .name = "OptGeneral2." + side.prefix + "FolderType",
                 .control = side.firstControl + kFolderType,
                 .number = -1,
                 .shown = shown};
  const int stored = options.ReadOptionInt(kSection, side.prefix + "FolderType", 0);
  for (const FolderRow& row : kFolders) {
    if ((side.mask & row.type) == 0) continue;
    if (static_cast<int>(row.type) == stored) type.number = static_cast<int>(type.items.size());
    type.items.push_back(texts.GetText(row.text));
  }
  for (int i = 0; i < kLabelCount; ++i) type.companions.push_back(side.firstControl + kLabels + i);
  form.fields.push_back(std::move(type));
  form.fields.push_back(
      {.kind = FieldKind::Check,
       .name = "OptGeneral2." + side.prefix + "Structure",
       .control = side.firstControl + kStructure,
       .number = options.ReadOptionInt(kSection, side.prefix + "Structure", 0) != 0 ? 1 : 0,
       .shown = shown && (side.mask & kStructureItem) != 0});
}

void FileNamePage::Save(Form& page) const {
  platform::RegistryBatch together(platform::Hive::CurrentUser);
  SaveSide(page, {"Local", 110, settings.LocalPartsItems()});
  SaveSide(page, {"Shared", 130, settings.SharedPartsItems()});
  const FormField& spaces = page.Field("OptGeneral2.ReplaceSpaces");
  if (spaces.shown) options.WriteOptionInt(kSection, "ReplaceSpaces", spaces.number);
  settings.ExportLegacyFileNameSettings();
  together.Commit();
}

// What was not shown stays as it is stored, and so does a folder type that is not offered.
void FileNamePage::SaveSide(Form& page, const Side& side) const {
  for (const TextRow& row : kTexts) {
    const std::string value = side.prefix + row.value;
    const FormField& field = page.Field("OptGeneral2." + value);
    if (field.shown) options.WriteOptionText(kSection, value, field.text);
  }
  const FormField& type = page.Field("OptGeneral2." + side.prefix + "FolderType");
  int index = 0;
  for (const FolderRow& row : kFolders) {
    if ((side.mask & row.type) == 0) continue;
    if (type.shown && type.number == index++) {
      options.WriteOptionInt(kSection, side.prefix + "FolderType", static_cast<int>(row.type));
    }
  }
  const FormField& structure = page.Field("OptGeneral2." + side.prefix + "Structure");
  if (structure.shown) {
    options.WriteOptionInt(kSection, side.prefix + "Structure", structure.number);
  }
}

}  // namespace quillmar
