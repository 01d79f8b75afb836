// The options sheet as a user works with it, on the machine whose dialogs are answered by a script.
#include "Calculation.h"
#include "platform/native/Machine.h"

namespace quillmar::contract {
namespace {

using platform::FormAnswer;
using platform::Machine;
using testing::IsSupersetOf;

const std::string kOptions = kModuleKey + "\\Sheet";

// A caller's page that notes what it is told.
struct Page {
  Page()
      : page{QM_OPTIONS_PAGE_SIGNATURE, sizeof page, nullptr, 1, "Mine", this, &OnEvent, nullptr} {}
  static int QM_CDECL OnEvent(void* context, int event, QmWindow) {
    auto& self = *static_cast<Page*>(context);
    self.events.push_back(event);
    return event != QM_PAGE_VALIDATE || self.refusals-- <= 0 ? 1 : 0;
  }

  QmOptionsPage page;
  std::vector<int> events;
  int refusals = 0;
};

class OptionsDialog : public Calculation {
 protected:
  OptionsDialog() {
    for (const char* section : {"\\OptBom", "\\OptGeneral", "\\OptGeneral2", "\\OptKC"}) {
      ClearKey(Hive::CurrentUser, kOptions + section);
    }
    Set();
    Machine::Current().Shown().clear();
  }

  void Set(const std::vector<const QmOptionsPage*>& pages = {}) {
    EXPECT_EQ(module.SetOptions(pages.data(), static_cast<int>(pages.size()), "Sheet", "", 0), 0);
  }

  int Show(const std::vector<FormAnswer>& answers) {
    for (const FormAnswer& answer : answers) Machine::Current().Answers().forms.push_back(answer);
    return module.ShowOptionsDialog();
  }

  std::string Stored(const char* section, const char* name) {
    const std::string key = kOptions + "\\" + section;
    if (const auto text = TextValue(Hive::CurrentUser, key, name)) return *text;
    const auto number = NumberValue(Hive::CurrentUser, key, name);
    return number ? std::to_string(*number) : kMissing;
  }

  static std::string LastShown() { return Machine::Current().Shown().back().text; }
};

TEST_F(OptionsDialog, ShowsWhatIsInForceAndSavesWhatWasEntered) {
  SetText(Hive::CurrentUser, kOptions + "\\OptBom", "User_Old", "%Mass%");
  SetNumber(Hive::CurrentUser, kOptions + "\\OptBom", "Stale", 7);
  SetNumber(Hive::CurrentUser, kOptions + "\\OptKC", "PicSize", 72);
  SetText(Hive::CurrentUser, kOptions + "\\OptGeneral2", "LocalFileName", "%CBFName%");
  Set();
  EXPECT_EQ(Show({{{"OptBom.TitleExt", "%BOM1%"},
                   {"OptBom.MakeUpperCase", "1"},
                   {"OptBom.ReplaceSpaces", "2"},
                   {"OptBom.Tags", "A=%Mass%;B=b;"},
                   {"OptKC.UseKCWindow", "0"},
                   {"OptGeneral2.LocalFileName", "n"},
                   {"OptGeneral2.LocalFolderType", "This folder"},
                   {"OptGeneral2.LocalStructure", "1"},
                   {"OptGeneral2.SharedStructure", "1"},
                   {"OptGeneral2.ReplaceSpaces", "1"}}}),
            1);
  EXPECT_EQ(Machine::Current().Shown().back().title, "Options");
  for (const char* shown :
       {"[File names]\n", "OptGeneral2.LocalFileName: %CBFName%\n", "[Bill of materials]\n",
        "OptBom.TitleExt: %Caption%\n", "OptBom.Tags: Old=%Mass%;\n", "OptKC.PicSize: 56\n"}) {
    EXPECT_THAT(LastShown(), HasSubstr(shown));
  }
  struct Row {
    const char* section;
    const char* name;
    std::string value;
  };
  for (const Row& row : {Row{"OptBom", "TitleExt", "%BOM1%"},
                         {"OptBom", "ReplaceSpaces", "2"},
                         {"OptBom", "MakeUpperCase", "1"},
                         {"OptBom", "NotDefaultTags", "1"},
                         {"OptBom", "HideReplaceCaptionSpaces", "0"},
                         {"OptBom", "User_A", "%Mass%"},
                         {"OptBom", "User_B", "b"},
                         {"OptBom", "User_Old", kMissing},
                         {"OptBom", "Stale", kMissing},
                         {"OptKC", "ActivateWindow", "0"},
                         {"OptKC", "PicSize", "72"},
                         {"OptKC", "ShowText", "1"},
                         {"OptKC", "IconView", "1"},
                         {"OptKC", "UseKCWindow", "0"},
                         {"OptGeneral2", "LocalFileName", "n"},
                         {"OptGeneral2", "LocalFolderType", "32"},
                         {"OptGeneral2", "LocalStructure", kMissing},  // not offered
                         {"OptGeneral2", "SharedStructure", "1"},
                         {"OptGeneral2", "ReplaceSpaces", "1"},
                         {"OptGeneral", "TitleExt1", "n"},
                         {"OptGeneral", "SmartDirType", "1"}}) {
    EXPECT_EQ(Stored(row.section, row.name), row.value) << row.name;
  }
}

TEST_F(OptionsDialog, CancellingLeavesEverything) {
  SetText(Hive::CurrentUser, kOptions + "\\OptBom", "User_Old", "old");
  Set();
  EXPECT_EQ(Show({}), 0);
  EXPECT_EQ(Stored("OptBom", "User_Old"), "old");
  EXPECT_EQ(Stored("OptBom", "TitleExt"), kMissing);
  EXPECT_EQ(Stored("OptKC", "PicSize"), kMissing);
}

TEST_F(OptionsDialog, DefaultTagsStandInFrontAndComeBack) {
  EXPECT_EQ(Show({{{"OptBom.DefaultTags", "1"}, {"OptBom.Tags", "Mine=m;"}}}), 1);
  EXPECT_EQ(Stored("OptBom", "NotDefaultTags"), "0");
  EXPECT_EQ(Stored("OptBom", "Description"), "Description");
  EXPECT_EQ(Stored("OptBom", "User_Mine"), "m");
  Set();
  EXPECT_EQ(Show({{}}), 1);
  EXPECT_THAT(LastShown(),
              HasSubstr("Tags: Description=Description;Size=Size;Standard=Standard;Mine=m;"));
  EXPECT_EQ(Stored("OptBom", "Standard"), "Standard") << "saving again keeps them";
  EXPECT_EQ(Show({{{"OptBom.DefaultTags", "0"}}}), 1);
  EXPECT_EQ(Stored("OptBom", "NotDefaultTags"), "1");
  EXPECT_EQ(Stored("OptBom", "Standard"), kMissing);
  EXPECT_EQ(Stored("OptBom", "User_Mine"), "m");
}

TEST_F(OptionsDialog, FlagsAndMasksHideParts) {
  SetNumber(Hive::CurrentUser, kOptions + "\\OptKC", "Show", 0);
  SetNumber(Hive::CurrentUser, kOptions + "\\OptGeneral", "HideSharedFile", 1);
  SetNumber(Hive::CurrentUser, kOptions + "\\OptGeneral", "HideReplaceFileSpaces", 1);
  SetNumber(Hive::CurrentUser, kOptions + "\\OptBom", "HideReplaceCaptionSpaces", 1);
  SetNumber(Hive::CurrentUser, kOptions + "\\OptGeneral2", "SharedStructure", 5);
  Set();
  EXPECT_EQ(Show({{{"OptGeneral2.SharedFileName", "x"}, {"OptBom.ReplaceSpaces", "1"}}}), 1);
  for (const char* hidden : {"OptKC", "Shared", "ReplaceSpaces"}) {
    EXPECT_THAT(LastShown(), testing::Not(HasSubstr(hidden)));
  }
  EXPECT_EQ(Stored("OptGeneral2", "SharedFileName"), kMissing);
  EXPECT_EQ(Stored("OptGeneral2", "SharedStructure"), "5");
  EXPECT_EQ(Stored("OptBom", "ReplaceSpaces"), "0");
  EXPECT_EQ(Stored("OptBom", "HideReplaceCaptionSpaces"), "1");
}

TEST_F(OptionsDialog, PagesOfTheCallerTakePart) {
  Page first;
  Page second;
  second.refusals = 1;
  const QmOptionsPage wrongSize{
      QM_OPTIONS_PAGE_SIGNATURE, 4, nullptr, 1, "", nullptr, &Page::OnEvent, nullptr};
  char unterminated[4] = {'n', 'o', 'p', 'e'};
  const auto* noPage = reinterpret_cast<const QmOptionsPage*>(unterminated + 1);
  Set({&first.page, nullptr, &wrongSize, noPage, reinterpret_cast<const QmOptionsPage*>(16),
       &second.page});
  EXPECT_EQ(Show({{}, {}}), 1);
  EXPECT_THAT(LastShown(), testing::EndsWith("[Mine]\n[Mine]\n"));
  EXPECT_THAT(second.events,
              ElementsAre(QM_PAGE_OPEN, QM_PAGE_VALIDATE, QM_PAGE_VALIDATE, QM_PAGE_ACCEPT));
  first.events.clear();
  EXPECT_EQ(Show({}), 0);
  EXPECT_THAT(first.events, ElementsAre(QM_PAGE_OPEN, QM_PAGE_CANCEL));
  EXPECT_EQ(module.SetOptions(nullptr, 5, nullptr, nullptr, 0), 0);
}

TEST_F(OptionsDialog, WithoutPagesThereIsNoSheet) {
  for (const char* section : {"\\OptBom", "\\OptGeneral", "\\OptKC"}) {
    SetNumber(Hive::CurrentUser, kOptions + section, "Show", 2);
  }
  Set();
  EXPECT_EQ(Show({{}}), 0);
  EXPECT_THAT(Machine::Current().Shown(), IsEmpty());
}

TEST_F(OptionsDialog, TheAboutBoxShowsItsText) {
  EXPECT_EQ(module.ShowAboutDlg("About", "Version 1"), 1);
  EXPECT_EQ(Machine::Current().Shown().back().title, "About");
  EXPECT_EQ(LastShown(), "Version 1");
  EXPECT_EQ(module.ShowAboutDlg(nullptr, nullptr), 1);
}

}  // namespace
}  // namespace quillmar::contract
