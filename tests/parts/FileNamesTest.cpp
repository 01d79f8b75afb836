// File names from the user's settings.
#include "FileNamesWorld.h"

namespace quillmar::test {
namespace {

using Lines = std::vector<std::string>;

class FileNamesTest : public FileNamesWorld {};

TEST_F(FileNamesTest, SharedPartsByFolderType) {
  const std::vector<Entry> entries = {{"Globals", "RefKey", "A1"}};
  struct Row {
    std::uint32_t type;
    std::uint32_t structure;
    const char* path;
  };
  for (const Row& row :
       {Row{1, 0, "<ASM>\\n.prt"}, Row{1, 1, "<ASM>\\A1\\n.prt"}, Row{2, 0, "<WORKSPACE>\\n.prt"},
        Row{4, 0, "<LIB>\\n.prt"}, Row{128, 0, "<CONTENTLIB>\\n.prt"}, Row{32, 0, "D:\\own\\n.prt"},
        Row{0, 0, "\\n.prt"}, Row{64, 1, "\\A1\\n.prt"}}) {
    EXPECT_EQ(Name(false,
                   {{"SharedFileName", "n"},
                    {"SharedFolder", "D:\\own"},
                    {"SharedFolderType", "", row.type},
                    {"SharedStructure", "", row.structure}},
                   entries),
              row.path)
        << row.type;
  }
  EXPECT_EQ(Name(false, {{"SharedFileName", "n"},
                         {"SharedFolderType", "", 2},
                         {"SharedStructure", "", 0},
                         {"SharedWorkspaceSubFolder", "sub"}}),
            "<WORKSPACE>\\sub\\n.prt");
  wantsFolder = false;
  EXPECT_EQ(Name(false, {{"SharedFileName", "n"}, {"SharedFolderType", "", 1}}), "\\n.prt");
}

TEST_F(FileNamesTest, LocalPartsAlwaysHaveAnIdentifier) {
  const std::vector<Entry> entries = {{"Main", "DataFile", "KEELDATA|GEAR1"}};
  const auto local = [&](const std::string& text, std::uint32_t spaces) {
    return Name(true,
                {{"LocalFileName", text},
                 {"LocalFolderType", "", 1},
                 {"LocalStructure", "", 0},
                 {"ReplaceSpaces", "", spaces}},
                entries);
  };
  using testing::MatchesRegex;
  EXPECT_THAT(local("%CBFName%", 0), MatchesRegex("<ASM>.GEAR1 \\w*\\.prt"));
  EXPECT_EQ(local("%CBFName%", 0).size(), std::string("<ASM>\\GEAR1 12345678.prt").size());
  EXPECT_THAT(local("%CBFName%", 2), MatchesRegex("<ASM>.GEAR1_\\w*\\.prt"));
  EXPECT_THAT(local("%CBFName%", 1), MatchesRegex("<ASM>.GEAR1\\w*\\.prt"));
  EXPECT_THAT(local("%uniqueid%", 0), MatchesRegex("<ASM>.\\w*\\.prt"));
  EXPECT_EQ(local("%uniqueid%", 0).size(), std::string("<ASM>\\12345678.prt").size());
  EXPECT_THAT(local("", 0), MatchesRegex("<ASM>. \\w*\\.prt")) << "and one never asks";
  EXPECT_THAT(Name(true, {{"LocalFileName", "", 7}, {"LocalFolderType", "1"}}),
              MatchesRegex(". \\w*\\.prt"))
      << "values of the wrong type are as good as none";
}

TEST_F(FileNamesTest, TokensOfTheProtocol) {
  const std::vector<Entry> entries = {{"Main", "DataFile", "KEELDATA|GEAR1"},
                                      {"Globals", "Model", "WHEEL_s"},
                                      {"Globals", "BOM2", "M8/40"},
                                      {"Globals", "BOM3USER", "own"},
                                      {"Globals", "BOM3", "third"},
                                      {"Data", "VXP_ED_X", "fixed"},
                                      {"Globals", "X", "global"},
                                      {"Globals", "Y", "global"},
                                      {"Data", "Y", "param"},
                                      {"Data", "Z", "param"},
                                      {"Material", "Steel", "C45"}};
  const auto shared = [&](const std::string& text) {
    const std::string path = Name(
        false, {{"SharedFileName", text}, {"SharedFolderType", "", 1}, {"SharedStructure", "", 0}},
        entries);
    return path.substr(6, path.size() - 10);
  };
  EXPECT_EQ(shared("%CBFName%"), "GEAR1S");
  EXPECT_EQ(shared("%MODELNAME%"), "WHEEL_s");
  EXPECT_EQ(shared("%BOM2%|%BOM3%"), "M8_40_own");
  EXPECT_EQ(shared("%X%%Y%%Z%%Steel%"), "fixedglobalparamC45");
  EXPECT_EQ(shared("%SizeId%").size(), 10u);
  EXPECT_EQ(shared("%CBFName% %BOM2% %Subtype%"), "GEAR1S M8_40");
  EXPECT_EQ(shared("a:b\x8A"), "a_bS");
}

TEST_F(FileNamesTest, WhereNoNameIsMade) {
  const std::vector<Setting> settings = {{"SharedFileName", "n"}, {"SharedFolderType", "", 1}};
  EXPECT_EQ(Name(false, settings, {{"Globals", "GenCopyFile", "0"}}), "lib");
  change = true;
  modelChanged = false;
  EXPECT_EQ(Name(true, {}), "(unchanged)");
  EXPECT_EQ(Name(false, settings), "<ASM>\\n.prt");
  sessionWithoutNames = true;
  EXPECT_EQ(Name(false, settings), "(unchanged)");
  EXPECT_EQ(Calls(), Lines{"p CloseProtocol"});
}

TEST_F(FileNamesTest, TheDriverAsksForAFile) {
  const std::vector<Entry> entries = {{"View", "Description", "left"}, {"Globals", "RefKey", "A1"}};
  const std::vector<Setting> settings = {
      {"SharedFileName", "%none%"}, {"SharedFolderType", "", 1}, {"SharedStructure", "", 1}};
  Offer(driver, "ShowFileDialog");
  FakeCad::Get().texts["ShowFileDialog"] = "D:\\parts\\chosen:1.prt";
  EXPECT_EQ(Name(false, settings, entries), "D:\\parts\\chosen:1.prt");
  EXPECT_EQ(CadCalls(), Lines{"cad ShowFileDialog 0|.prt|0|Parts (*.prt)|*.prt||Cap (left)|1024"});
  EXPECT_EQ(options.ReadOptionText("OptGeneral", "LastQuestionPath", ""), "D:\\parts");
  FakeCad::Get().refuses = {"ShowFileDialog"};
  EXPECT_EQ(Name(false, settings, entries), "(cancelled)");
}

}  // namespace
}  // namespace quillmar::test
