#include "options/OptionsSheet.h"

#include <algorithm>

#include "base/Texts.h"
#include "options/FileNamePage.h"

namespace quillmar {
namespace {

using platform::FieldKind;
using platform::Form;
using platform::FormField;

// Dialog templates and their controls, as in the module's resources.
constexpr int kBomTemplate = 4005;
constexpr int kKcTemplate = 4006;
enum BomControl {
  kCaption = 101,  // and its list of tags
  kUpperCase = 103,
  kSpaces = 104,  // three buttons
  kSpacesFrame = 107,
  kDefaultTags = 108,
  kTags = 110
};
enum KcControl {
  kUseWindow = 101,
  kActivate = 102,
  kShowText = 103,
  kIconView = 104,
  kPictureSize = 105
};

enum TextNumber { kNameHeading = 4, kTextHeading = 5, kBomTitle = 4101, kKcTitle = 4102 };

// Buttons of the spaces rule; a stored rule beyond them counts as the last.
const std::vector<std::string> kSpaceRules = {"0", "1", "2"};
constexpr std::size_t kLongestTitle = 255;

FormField Check(const char* name, int control, bool value) {
  return {.kind = FieldKind::Check, .name = name, .control = control, .number = value ? 1 : 0};
}

bool IsChecked(Form& form, const char* name) { return form.Field(name).number != 0; }

Form BomPage(const OptionsStore& options, const LanguageTable& texts, const SheetOffers& offers) {
  const EditedOptions& values = options.Edited();
  std::vector<BomTag> defaults = options.StoredDefaultTags();
  if (values.defaultTags) defaults.clear();  // they are among the tags already
  FormField tags{.kind = FieldKind::Rows,
                 .name = "OptBom.Tags",
                 .control = kTags,
                 .items = offers.tags,
                 .headings = {texts.GetText(kNameHeading), texts.GetText(kTextHeading)},
                 .firstTexts = offers.tagNames};
  for (const BomTag& tag : defaults) tags.rows.push_back({tag.name, tag.text, true});
  for (std::size_t i = 0; i < values.tags.size(); ++i) {
    const bool fixed = values.defaultTags && i < std::size(kDefaultTagTexts);
    tags.rows.push_back({values.tags[i].name, values.tags[i].text, fixed});
  }
  return {
      .title = texts.GetText(kBomTitle),
      .dialogTemplate = kBomTemplate,
      .fields = {
          {.kind = FieldKind::Text,
           .name = "OptBom.TitleExt",
           .control = kCaption,
           .text = values.captionTemplate,
           .items = offers.tags},
          Check("OptBom.MakeUpperCase", kUpperCase, values.upperCase),
          {.kind = FieldKind::Radio,
           .name = "OptBom.ReplaceSpaces",
           .control = kSpaces,
           .number =
               values.replaceSpaces == 0 || values.replaceSpaces == 1 ? values.replaceSpaces : 2,
           .items = kSpaceRules,
           .shown = !options.Flag(7),
           .companions = {kSpacesFrame}},
          Check("OptBom.DefaultTags", kDefaultTags, values.defaultTags || !defaults.empty()),
          tags}};
}

// The default tags stand in front; they come and go with their check box.
void ReadTags(Form& page, EditedOptions& values) {
  std::vector<platform::FormRow> rows = page.Field("OptBom.Tags").rows;
  values.defaultTags = IsChecked(page, "OptBom.DefaultTags");
  const bool hasDefaults =
      std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.readOnly; });
  values.tags.clear();
  if (values.defaultTags && !hasDefaults) {
    for (const char* text : kDefaultTagTexts) values.tags.push_back({text, text});
  }
  for (const platform::FormRow& row : rows) {
    if (!row.readOnly || values.defaultTags) values.tags.push_back({row.first, row.second});
  }
}

void ReadBomPage(Form& page, EditedOptions& values) {
  values.captionTemplate = page.Field("OptBom.TitleExt").text;
  values.upperCase = IsChecked(page, "OptBom.MakeUpperCase");
  const FormField& spaces = page.Field("OptBom.ReplaceSpaces");
  // A rule of another number stays when the user left its button pressed.
  const bool kept = spaces.number == 2 && values.replaceSpaces != 0 && values.replaceSpaces != 1;
  if (spaces.shown && !kept) values.replaceSpaces = spaces.number;
  ReadTags(page, values);
}

Form KcPage(const OptionsStore& options, const LanguageTable& texts) {
  const KcWindowOptions& values = options.KcWindow();
  FormField activate = Check("OptKC.ActivateWindow", kActivate, values.activateWindow);
  activate.shown = values.showCheckActivate;
  return {.title = texts.GetText(kKcTitle),
          .dialogTemplate = kKcTemplate,
          .fields = {Check("OptKC.UseKCWindow", kUseWindow, values.useWindow),
                     activate,
                     Check("OptKC.ShowText", kShowText, values.showText),
                     Check("OptKC.IconView", kIconView, values.iconView),
                     {.kind = FieldKind::Text,
                      .name = "OptKC.PicSize",
                      .control = kPictureSize,
                      .text = std::to_string(values.pictureSize)}}};
}

void ReadKcPage(Form& page, KcWindowOptions& values) {
  values.useWindow = IsChecked(page, "OptKC.UseKCWindow");
  values.activateWindow = IsChecked(page, "OptKC.ActivateWindow");
  values.showText = IsChecked(page, "OptKC.ShowText");
  values.iconView = IsChecked(page, "OptKC.IconView");
  const std::string& size = page.Field("OptKC.PicSize").text;
  if (IsNumber(size)) values.pictureSize = ParseInt(size);
}

}  // namespace

bool ShowOptionsSheet(OptionsStore& options, const LanguageTable& texts, const SheetOffers& offers,
                      platform::DialogSurroundings surroundings) {
  surroundings.translate = [&texts](QmWindow dialog) { texts.TranslateWindow(dialog); };
  FileNamePage fileNames(options, texts, offers);
  const ShownPages shown = options.Pages();
  platform::Sheet sheet{.title = options.Title(),
                        .pages = {},
                        .helpFile = options.Extras().helpFile,
                        .helpContext = options.Extras().helpContext};
  if (shown.general) sheet.pages.emplace_back(fileNames.MakeForm(surroundings));
  if (shown.bom) sheet.pages.emplace_back(BomPage(options, texts, offers));
  if (shown.kc) sheet.pages.emplace_back(KcPage(options, texts));
  const std::size_t ownPages = sheet.pages.size();
  // The titles may have moved since they were copied.
  const SheetExtras extras = options.Extras();
  for (std::size_t i = 0; i < extras.pages.size(); ++i) {
    QmOptionsPage page = extras.pages[i];
    page.title = extras.titles[i].empty() ? nullptr : extras.titles[i].c_str();
    sheet.pages.emplace_back(page);
  }
  if (!platform::ShowSheet(surroundings, sheet)) return false;

  EditedOptions edited = options.Edited();
  for (std::size_t i = 0; i < ownPages; ++i) {
    Form& page = std::get<Form>(sheet.pages[i]);
    if (page.dialogTemplate == kBomTemplate) {
      ReadBomPage(page, edited);
    } else if (page.dialogTemplate == kKcTemplate) {
      ReadKcPage(page, edited.kcWindow);
    } else {
      fileNames.Save(page);
    }
  }
  options.Save(std::move(edited));
  return true;
}

namespace {

// The title is copied as far as it can be read.
std::string CopyTitle(const char* title) {
  std::string copy;
  char character = '\0';
  while (title != nullptr && copy.size() < kLongestTitle &&
         platform::ReadForeignMemory(title + copy.size(), &character, 1) && character != '\0') {
    copy += character;
  }
  return copy;
}

bool CopyPage(const void* from, QmOptionsPage& page) {
  return platform::ReadForeignMemory(from, &page, sizeof page) &&
         page.signature == QM_OPTIONS_PAGE_SIGNATURE && page.size == sizeof page &&
         page.onEvent != nullptr;
}

}  // namespace

SheetExtras CopyPages(const void* const* pages, int count,
                      const std::function<void(int index)>& reject) {
  SheetExtras extras;
  for (int i = 0; i < count && extras.pages.size() < QM_MOST_OPTIONS_PAGES; ++i) {
    const void* from = nullptr;
    if (!platform::ReadForeignMemory(pages + i, &from, sizeof from)) {
      reject(i);
      break;  // the array ends here, whatever the count says
    }
    QmOptionsPage page{};
    if (!CopyPage(from, page)) {
      reject(i);
      continue;
    }
    extras.titles.push_back(CopyTitle(page.title));
    extras.pages.push_back(page);
  }
  return extras;
}

}  // namespace quillmar
