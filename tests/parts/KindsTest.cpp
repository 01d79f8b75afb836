// What each kind of part hands to the CAD and how it answers.
#include <cmath>

#include "PartsWorld.h"

namespace quillmar::test {
namespace {

using testing::Contains;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

class KindsTest : public PartsWorld {
 protected:
  KindsTest() {
    SetOption("OptGeneral2", "SharedFileName", std::string("name"));
    SetOption("OptGeneral2", "SharedFolderType", 4u);
    Offer(driver, "InsertFeature");
    Offer(driver, "ChangeFeature");
    Offer(driver, "InsertCamPart");
    Offer(driver, "ChangeCamPart");
  }

  std::string Make(int type, const std::vector<Entry>& more = {}) {
    const std::string protocolId =
        MakeProtocol("p", {{"Main", "DataFile", "KEELDATA|KIND"},
                           {"Globals", "TypeOfPart", std::to_string(type).c_str()},
                           {"Globals", "Path", "C:\\Lib\\"},
                           {"Globals", "Changed", "0"},
                           {"Cadx", "ReallySmartPart", "0"},
                           {"Object", "CadDescription", "Title"},
                           {"View", "Description", "left"},
                           {"Data", "d", "1,5", "mm"},
                           {"Data", "VXP_FS_hole", "1", ""},
                           {"Model", "", "MOD"}});
    Put(protocolId, more);
    return protocolId;
  }

  void CamProfile(const std::string& protocolId) {
    Put(protocolId, {{"Data", "cPoint", "2"},
                     {"Data", "a_1", "90"},
                     {"Data", "l_1", "3"},
                     {"Data", "a_2", "0"},
                     {"Data", "l_2", "4"},
                     {"Data", "bv", "20", "mm"}});
  }
};

const std::string kList = "*view*,,d,1<VXCOMMA>5";
const std::string kCamList = kList + ",cPoint,2,a_1,90,l_1,3,a_2,0,l_2,4,bv,20";

TEST_F(KindsTest, InsertHandsOver) {
  EXPECT_TRUE(Insert(Make(2)));
  EXPECT_THAT(CadCalls(), Lines{"cad InsertParamPart p|C:\\Lib\\models\\MOD.prt|" + kList +
                                "|p<@PID>|0|<LIB>\\name.prt|Title|0"});
  EXPECT_TRUE(Insert(Make(9)));
  EXPECT_THAT(CadCalls(), Lines{"cad InsertShaft p|C:\\Lib\\models\\MOD.prt|" + kList +
                                "|p<@PID>|<LIB>\\name.prt|Title|0"});
  // Features have no rule for a folder and end in another extension.
  EXPECT_TRUE(Insert(Make(7)));
  EXPECT_THAT(CadCalls(), Lines{"cad InsertFeature C:\\Lib\\models\\MOD.ftr|p|p<@PID>|"
                                "\\name.ftr|Title|" +
                                kList});
  const std::string cam = Make(14);
  CamProfile(cam);
  EXPECT_TRUE(Insert(cam));
  EXPECT_THAT(CadCalls(), Lines{"cad InsertCamPart p|2|20.000000|mm|p<@PID>|<LIB>\\name.prt|"
                                "Title|0"});
  const auto& profile = FakeCad::Get().camProfile;
  ASSERT_EQ(profile.size(), 4u);
  EXPECT_DOUBLE_EQ(profile[0], 3.0 * std::sin(90.0 * (3.141592653589793 / 180.0)));
  EXPECT_DOUBLE_EQ(profile[1], 0.0);
  EXPECT_NEAR(profile[2], 0.0, 1e-15);
  EXPECT_DOUBLE_EQ(profile[3], 4.0);

  Offer(driver, "InsertCamPartEx");
  EXPECT_TRUE(Insert(cam));
  EXPECT_THAT(CadCalls(), Lines{"cad InsertCamPartEx p|" + kCamList +
                                "|p<@PID>|<LIB>\\name.prt|C:\\Lib\\models\\MOD.prt|Title|0"});
}

TEST_F(KindsTest, ChangeHandsOver) {
  session.showFlag = kKeepSharedIdentity;
  Offer(driver, "SetFeaturesState");
  EXPECT_TRUE(Update(Make(2, {{"Globals", "OldModelId", "mod"}})));
  EXPECT_THAT(CadCalls(), (Lines{"cad ChangeParamPart p|C:\\Lib\\models\\MOD.prt|" + kList +
                                     "|p<@PID>|0|<LIB>\\name.prt|Title|0|0",
                                 "cad SetFeaturesState p|hole,1"}));
  EXPECT_TRUE(Update(Make(9)));
  EXPECT_THAT(CadCalls(),
              (Lines{"cad ChangeShaft p|C:\\Lib\\models\\MOD.prt|" + kList + "|p<@PID>|Title|0",
                     "cad SetFeaturesState p|hole,1"}));
  EXPECT_TRUE(Update(Make(8)));
  EXPECT_THAT(CadCalls(),
              Lines{"cad ChangeFeature C:\\Lib\\models\\MOD.ftr|p|p<@PID>|Title|" + kList});
  const std::string cam = Make(14);
  CamProfile(cam);
  EXPECT_TRUE(Update(cam));
  EXPECT_THAT(CadCalls(), (Lines{"cad ChangeCamPart p|2|20.000000|mm|p<@PID>|Title|0",
                                 "cad SetFeaturesState p|hole,1"}));
  Offer(driver, "ChangeCamPartEx");
  EXPECT_TRUE(Update(cam));
  EXPECT_THAT(CadCalls(), (Lines{"cad ChangeCamPartEx p|" + kCamList + "|p<@PID>|Title|0",
                                 "cad SetFeaturesState p|hole,1"}));
}

TEST_F(KindsTest, FailuresAreReportedOnce) {
  const std::string insertFailed = "VXPart.cpp: Cannot insert part into cad system.";
  struct Row {
    int type;
    const char* insert;
    const char* insertReport;
    const char* change;
    const char* changeReport;
    const char* reconnectReport;
  };
  const Row rows[] = {
      {2, "InsertParamPart", "VXParamPart.cpp: Cannot insert parameter part", "ChangeParamPart",
       "VXParamPart.cpp: Cannot update parameter part", "VXParamPart.cpp: Cannot update protocol"},
      {9, "InsertShaft", "VXShaft.cpp: Cannot insert parameter part - SHAFT", "ChangeShaft",
       "VXShaft.cpp: Cannot insert parameter part - SHAFT", "VXShaft.cpp: Cannot update protocol"},
      {7, "InsertFeature", "VXFeaturePart.cpp: Cannot insert parameter feature", "ChangeFeature",
       "VXFeaturePart.cpp: Cannot update feature part",
       "VXFeaturePart.cpp: Cannot update protocol"},
      {14, "InsertCamPart", "VXCamPart.cpp: Cannot insert CAM part", "ChangeCamPart",
       "VXCamPart.cpp: Cannot change CAM part", "VXCamPart.cpp: Cannot update protocol"},
  };
  for (const Row& row : rows) {
    const std::string protocolId = Make(row.type);
    FakeCad::Get().refuses = {row.insert, row.change, "ConnectProtocol"};
    EXPECT_FALSE(Insert(protocolId));
    EXPECT_EQ(TakeReports(), (Lines{row.insertReport, insertFailed}));
    EXPECT_FALSE(Update(protocolId));
    EXPECT_EQ(TakeReports(), Lines{row.changeReport});
    Put(protocolId, {{"Globals", "Changed", "1"}});
    EXPECT_FALSE(Update(protocolId));
    EXPECT_EQ(TakeReports(), Lines{row.reconnectReport});
    Put(protocolId, {{"Globals", "Changed", "2"}});
    EXPECT_TRUE(Update(protocolId));
    EXPECT_THAT(CadCalls(), IsEmpty());
  }
}

TEST_F(KindsTest, CadWithoutCams) {
  driver.InsertCamPart.pointer = nullptr;
  driver.ChangeCamPart.pointer = nullptr;
  const std::string cam = Make(14, {{"Data", "cPoint", "0"}});
  EXPECT_FALSE(Insert(cam));
  EXPECT_THAT(TakeReports(),
              Contains("VXCamPart.cpp: CAD doesn't support \"InsertCamPart\" function"));
  EXPECT_FALSE(Update(cam));
  EXPECT_THAT(TakeReports(),
              Lines{"VXCamPart.cpp: CAD doesn't support \"ChangeCamPart\" function"});
}

TEST_F(KindsTest, CountThatIsNoneOfPoints) {
  for (const char* count : {"-3", "2147483647", "none"}) {
    EXPECT_TRUE(Insert(Make(14, {{"Data", "cPoint", count}})));
    EXPECT_THAT(FakeCad::Get().camProfile, IsEmpty()) << count;
  }
}

TEST_F(KindsTest, SharedPartFollowsTheGenerationRules) {
  EXPECT_TRUE(Insert(Make(2, {{"Globals", "GenPartType", "0"}, {"Globals", "GenCopyFile", "0"}})));
  EXPECT_THAT(CadCalls(), Lines{"cad InsertParamPart p|C:\\Lib\\models\\MOD.prt||p<@PID>|0|"
                                "C:\\Lib\\models\\MOD.prt|Title|0"});
  EXPECT_TRUE(Insert(Make(2, {{"Globals", "GenPartType", "0"}, {"Cadx", "ReallySmartPart", "1"}})));
  EXPECT_THAT(CadCalls().front(), testing::HasSubstr("|" + kList + "|p<@PID>|1|"));
}

TEST_F(KindsTest, UserPartsHaveNoDescriptionOfTheirOwn) {
  for (const auto& [dataFile, wanted] : {std::pair{"KeelData|UserPart", false},
                                         {"UserPart7", false},
                                         {"MyUSERPART", false},
                                         {"KeelData|user", true},
                                         {"a userpart of b", true}}) {
    EXPECT_EQ(WithPart(Make(2, {{"Main", "DataFile", dataFile}}),
                       [](VXPart& part) { return part.WantsDescription(); }),
              wanted)
        << dataFile;
  }
  EXPECT_TRUE(WithPart(Make(9, {{"Main", "DataFile", "KeelData|userpart"}}),
                       [](VXPart& part) { return part.WantsDescription(); }));
}

TEST_F(KindsTest, ModelIdThatIsAPathOfAFile) {
  const std::string file = WriteSuiteFile("own.prt", "");
  EXPECT_TRUE(Insert(Make(2, {{"Model", "", file.c_str()}})));
  EXPECT_THAT(CadCalls().front(), testing::HasSubstr("|SUITE\\own.prt|"));
  EXPECT_TRUE(Insert(Make(2, {{"Model", "", "C:\\missing.prt"}})));
  EXPECT_THAT(CadCalls().front(), testing::HasSubstr("|C:\\Lib\\models\\C:\\missing.prt.prt|"));
}

TEST_F(KindsTest, SharedPartGetsAnIdentityOfItsOwn) {
  const std::string part = Make(2, {{"Globals", "OldModelId", "OTHER"}});
  EXPECT_TRUE(Update(part));
  EXPECT_THAT(CadCalls().front(), testing::HasSubstr("ChangeParamPart p|"));
  EXPECT_THAT(CadCalls().front(), testing::HasSubstr("|new1<@PID>|0|<LIB>\\name.prt|Title|0|1"));
  EXPECT_THAT(Calls(), Contains("new1 EraseProtocol"));
  EXPECT_TRUE(
      Update(Make(2, {{"Cadx", "ReallySmartPart", "1"}, {"Globals", "OldModelId", "mod"}})));
  EXPECT_THAT(CadCalls().front(), testing::HasSubstr("|p<@PID>|1||Title|0|0"));
}

TEST_F(KindsTest, ActiveConfigurationIsSwitchedAndNothingElse) {
  const std::string part =
      Make(2, {{"Configurations", "Active", "M8"}, {"Globals", "Changed", "1"}});
  EXPECT_TRUE(Update(part));
  EXPECT_THAT(CadCalls(), Lines{"cad ConnectProtocol p|p<@PID>"});
  Offer(driver, "SetActiveConfiguration");
  FakeCad::Get().refuses = {"SetActiveConfiguration"};
  EXPECT_TRUE(Update(part));
  EXPECT_THAT(CadCalls(), Lines{"cad SetActiveConfiguration p|M8|p<@PID>"});
}

TEST_F(KindsTest, ReadsBackWhatTheCadKnows) {
  const auto readBack = [&](const std::string& protocolId) {
    return WithPart(protocolId, [](VXPart& part) { return part.ReadBackFromCad(); });
  };
  FakeCad::Get().texts = {{"GetParameterList", "d,2"},
                          {"GetFeaturesState", "hole,0"},
                          {"GetConfiguration", "M6,M8"},
                          {"ActiveConfiguration", "M8"}};
  Offer(driver, "GetFeaturesState");
  Offer(driver, "GetConfiguration");
  const std::string part = Make(2, {{"Configurations", "Config7", "old"}});
  FakeCad::Get().sizes = {{"GetConfiguration", 1}};
  EXPECT_TRUE(readBack(part));
  EXPECT_THAT(CadCalls(), (Lines{"cad GetParameterList p", "cad GetFeaturesState p",
                                 "cad GetConfiguration p|65535", "cad GetConfiguration p|262140"}));
  EXPECT_EQ(GetParam(part, "d"), "2 mm");
  EXPECT_EQ(GetParam(part, "VXP_FS_hole"), "0 ");
  EXPECT_EQ(Get(part, "Globals", "OldModelId"), "MOD");
  EXPECT_EQ(Get(part, "Configurations", "Active"), "M8");
  EXPECT_EQ(Get(part, "Configurations", "Config1"), "M6");
  EXPECT_EQ(Get(part, "Configurations", "Config2"), "M8");
  EXPECT_EQ(Get(part, "Configurations", "Config7"), "");

  FakeCad::Get().refuses = {"GetConfiguration"};
  EXPECT_FALSE(readBack(part));

  // A shaft has a list of its own; a driver without it changes nothing, not even the CAD's names.
  const std::string shaft = Make(9, {{"Cadx", "CADVars", "d"}});
  EXPECT_TRUE(readBack(shaft));
  EXPECT_THAT(CadCalls(), Lines{"cad GetFeaturesState p"});
  EXPECT_EQ(GetParam(shaft, "d"), "1,5 mm");
  Offer(driver, "GetShaftParameterList");
  FakeCad::Get().refuses = {"GetFeaturesState", "GetShaftParameterList"};
  EXPECT_FALSE(readBack(shaft));
  FakeCad::Get().refuses = {"GetFeaturesState"};
  EXPECT_TRUE(readBack(shaft));
  Offer(driver, "GetParameterListEx");
  EXPECT_TRUE(readBack(shaft));
  EXPECT_THAT(CadCalls(), (Lines{"cad GetParameterListEx p|0|0", "cad GetFeaturesState p"}));
}

TEST_F(KindsTest, OnlyKnownKindsHaveAPart) {
  const auto hasPart = [&](int type, const char* dataFile) {
    return WithPart(Make(type, {{"Main", "DataFile", dataFile}}), [](VXPart&) { return true; });
  };
  for (const int type : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14}) {
    EXPECT_TRUE(hasPart(type, "KEELDATA|KIND")) << type;
  }
  for (const int type : {0, 11, 15, 99}) EXPECT_FALSE(hasPart(type, "KEELDATA|KIND")) << type;
  EXPECT_TRUE(hasPart(11, "KEELDATA|XtalVek")) << "a group, whatever its type";
}

TEST_F(KindsTest, LocalFlagIsDecidedOnceAndKept) {
  struct Row {
    std::uint32_t smartParts;  // the option
    bool groupManager;
    const char* smartPart;
    const char* kept;
  };
  for (const Row& row : {Row{0, false, "0", "1"}, Row{1, false, "0", "0"}, Row{1, false, "1", "1"},
                         Row{0, true, "0", "0"}, Row{0, true, "1", "1"}}) {
    SetOption("OptGeneral", "Show2", row.smartParts);
    RereadOptions();
    session.groupManager = row.groupManager;
    const std::string part = Make(2, {{"Cadx", "SmartPart", row.smartPart}});
    {
      VXProtocol protocol(protocols, part);
      protocol.EraseCadx("ReallySmartPart");
    }
    WithPart(part, [](VXPart&) { return true; });
    EXPECT_EQ(Get(part, "Cadx", "ReallySmartPart"), row.kept);
  }
}

TEST_F(KindsTest, CaptionFollowsTheOptions) {
  const auto caption = [&](int type, const std::vector<Entry>& entries) {
    std::string text;
    WithPart(Make(type, entries), [&](VXPart& part) {
      text = part.Caption();
      return true;
    });
    return text;
  };
  const Entry none = {"Object", "CadDescription", ""};
  EXPECT_EQ(caption(2, {}), "Title");
  EXPECT_EQ(caption(2, {none, {"Globals", "Caption", "Given"}}), "Given");
  EXPECT_EQ(caption(2, {none, {"Globals", "Bom1", "a"}, {"Globals", "Bom3", "c"}}), "a  c");
  EXPECT_EQ(
      caption(2, {{"Grupova", "UseUserDescription", "1"}, {"Grupova", "UserDescription", "Mine"}}),
      "Mine");
  SetOption("OptBom", "TitleExt", std::string());
  RereadOptions();
  EXPECT_EQ(caption(2, {}), "Title");
  EXPECT_EQ(caption(7, {}), "Title (left)");
  SetOption("OptBom", "MakeUpperCase", 1u);
  SetOption("OptBom", "ReplaceSpaces", 2u);
  RereadOptions();
  EXPECT_EQ(caption(7, {}), "TITLE_(LEFT)");
  SetOption("OptBom", "ReplaceSpaces", 1u);
  RereadOptions();
  EXPECT_EQ(caption(7, {}), "TITLE(LEFT)");
}

}  // namespace
}  // namespace quillmar::test
