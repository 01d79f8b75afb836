// The options sheet, the depths of scans and the About box as a user works with them.
#include "Calculation.h"
#include "FormUser.h"

namespace quillmar::contract {
namespace {

constexpr uint32_t kCommandMessage = 0x0111;

const std::string kOptions = kModuleKey + "\\Sheet";

// A caller's page that notes what it is told.
struct Page {
  Page()
      : page{QM_OPTIONS_PAGE_SIGNATURE,
             sizeof page,
             PageResources(),
             kPageTemplate,
             "Mine",
             this,
             &OnEvent,
             &OnMessage} {}
  // Of several questions on the way to the end, one is kept.
  static int QM_CDECL OnEvent(void* context, int event, QmWindow) {
    auto& self = *static_cast<Page*>(context);
    if (self.events.empty() || self.events.back() != event) self.events.push_back(event);
    return event != QM_PAGE_VALIDATE || self.refusals-- <= 0 ? 1 : 0;
  }
  static int QM_CDECL OnMessage(void* context, QmWindow, uint32_t message, uintptr_t control,
                                intptr_t) {
    auto& self = *static_cast<Page*>(context);
    if (message == kCommandMessage && (control & 0xFFFF) == 101) self.clicked = true;
    return 0;
  }

  QmOptionsPage page;
  std::vector<int> events;
  int refusals = 0;
  bool clicked = false;
};

class OptionsDialog : public Calculation {
 protected:
  OptionsDialog() {
    for (const char* section : {"\\OptBom", "\\OptGeneral", "\\OptGeneral2", "\\OptKC"}) {
      ClearKey(Hive::CurrentUser, kOptions + section);
    }
    Set();
  }

  void Set(const std::vector<const QmOptionsPage*>& pages = {}) {
    EXPECT_EQ(module.SetOptions(pages.data(), static_cast<int>(pages.size()), "Sheet", "", 0), 0);
  }

  int Show(const std::vector<Entries>& entries) {
    FormUser user(entries);
    const int result = module.ShowOptionsDialog();
    seen = user.Leave();
    return result;
  }

  std::string Stored(const char* section, const char* name) {
    const std::string key = kOptions + "\\" + section;
    if (const auto text = TextValue(Hive::CurrentUser, key, name)) return *text;
    const auto number = NumberValue(Hive::CurrentUser, key, name);
    return number ? std::to_string(*number) : kMissing;
  }

  std::string Shown() const { return seen.empty() ? "" : seen.front().text; }

  std::vector<SeenDialog> seen;
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
  ASSERT_THAT(seen, testing::SizeIs(1));
  EXPECT_EQ(seen.front().title, "Options");
  for (const char* shown :
       {"[File names]\n", "OptGeneral2.LocalFileName: %CBFName%\n", "[Bill of materials]\n",
        "OptBom.TitleExt: %Caption%\n", "OptBom.Tags: Old=%Mass%;\n", "OptKC.PicSize: 56\n"}) {
    EXPECT_THAT(Shown(), HasSubstr(shown));
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
  EXPECT_THAT(Shown(),
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
    EXPECT_THAT(Shown(), testing::Not(HasSubstr(hidden)));
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
  EXPECT_EQ(Show({{{"Mine.Check", "1"}}, {}}), 1);
  EXPECT_LT(Shown().find("[Mine]"), Shown().rfind("[Mine]")) << "two of them";
  EXPECT_THAT(second.events, ElementsAre(QM_PAGE_OPEN, QM_PAGE_VALIDATE, QM_PAGE_ACCEPT));
  EXPECT_LT(second.refusals, 0) << "asked again";
  EXPECT_EQ(first.clicked, kDialogsAreWindows);
  first.events.clear();
  EXPECT_EQ(Show({}), 0);
  EXPECT_EQ(first.events.front(), QM_PAGE_OPEN);
  EXPECT_EQ(first.events.back(), QM_PAGE_CANCEL);
  EXPECT_EQ(module.SetOptions(nullptr, 5, nullptr, nullptr, 0), 0);
}

TEST_F(OptionsDialog, WithoutPagesThereIsNoSheet) {
  for (const char* section : {"\\OptBom", "\\OptGeneral", "\\OptKC"}) {
    SetNumber(Hive::CurrentUser, kOptions + section, "Show", 2);
  }
  Set();
  EXPECT_EQ(Show({{}}), 0);
  EXPECT_THAT(seen, IsEmpty());
}

TEST_F(OptionsDialog, DepthsOfScansAreReachedFromTheGeneralPage) {
  struct Row {
    std::vector<Entries> entries;  // of the depth dialog
    std::size_t dialogs;           // beside the sheet
    const char* shown;             // of the depth dialog
    std::string values;
    std::string parents;
    std::string children;
  };
  for (const Row& row :
       {Row{{}, 1, "DepthParIdx: All\nDepthChiIdx: All\n", kMissing, kMissing, kMissing},
        Row{{{{"DepthParIdx", "5"}, {"DepthChiIdx", "None"}}}, 1, "All", "1,2,3,5", "4", "0"},
        Row{{{{"DepthChiIdx", "0"}}, {{"DepthChiIdx", "3"}}},
            2,
            "DepthParIdx: 5\nDepthChiIdx: None\n",
            "1,2,3,5",
            "4",
            "3"}}) {
    std::vector<Entries> entries{{{"OptGeneral.Depths", "press"}}};
    entries.insert(entries.end(), row.entries.begin(), row.entries.end());
    Show(entries);
    ASSERT_THAT(seen, testing::SizeIs(1 + row.dialogs));
    EXPECT_EQ(seen[1].title, "Depth of scans");
    EXPECT_THAT(seen[1].text, HasSubstr(row.shown));
    if (row.dialogs > 1) {
      EXPECT_EQ(seen[2].text, "Enter a number greater than 0.");
    }
    EXPECT_EQ(Stored("OptGeneral", "DepthValues"), row.values);
    EXPECT_EQ(Stored("OptGeneral", "DepthParIdx"), row.parents);
    EXPECT_EQ(Stored("OptGeneral", "DepthChiIdx"), row.children);
  }
}

TEST_F(OptionsDialog, TheAboutBoxShowsItsText) {
  FormUser user;
  EXPECT_EQ(module.ShowAboutDlg("About it", "Version 1"), 1);
  EXPECT_EQ(module.ShowAboutDlg(nullptr, nullptr), 1);
  seen = user.Leave();
  ASSERT_THAT(seen, testing::SizeIs(2));
  EXPECT_EQ(seen[0].title, "About it");
  EXPECT_EQ(seen[0].text, "Version 1");
}

}  // namespace
}  // namespace quillmar::contract
