// Objects and their files: where they go, what they never overwrite, how they keep their identity.
#include "CadAddin.h"
#include "drawboard/DriveFiles.h"
#include "platform/Files.h"

using drawboard::ReadWholeFile;
using quillmar::platform::FileExists;

TEST_F(CadAddin, PartFilesLieWhereTheMarkersOfTheirPathsLead) {
  const struct {
    const char* given;
    const char* expected;  // below the test's folder
  } cases[] = {
      {"<ASM>\\A.dbp", "\\Gearbox\\A.dbp"},    {"<WORKSPACE>\\sub\\B.dbp", "\\work\\sub\\B.dbp"},
      {"<LIB>\\C.dbp", "\\lib\\C.dbp"},        {"<CONTENTLIB>\\D.dbp", "\\content\\D.dbp"},
      {"<workspace>\\E.dbp", "\\work\\E.dbp"}, {"<WORKSPACE>\\\\F.dbp", "\\work\\F.dbp"},
      {"\\G.dbp", "\\Gearbox\\G.dbp"},         {"H.dbp", "\\Gearbox\\H.dbp"},
      {"", "\\Gearbox\\parametric part.dbp"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(InsertWheel("P1", each.given), 1) << each.given << "\n" << Messages();
    const auto file = ReadWholeFile(folder + each.expected);
    ASSERT_TRUE(file) << each.given;
    EXPECT_EQ(nlohmann::json::parse(*file)["parameters"]["d"], "100");
  }
  const std::string own = folder + "\\elsewhere\\I.dbp";
  EXPECT_EQ(InsertWheel("P1", own), 1);
  EXPECT_TRUE(FileExists(own));
}

TEST_F(CadAddin, PathsThatNameNoFileAreRefusedAndSaidSo) {
  for (const char* given : {"<FOO>\\A.dbp", "<ASM>\\..\\A.dbp", "<ASM>\\", "<ASM>\\a:b.dbp",
                            "<ASM>\\a|b.dbp", "<ASM>\\<LIB>\\a.dbp"}) {
    cad.Drawboard_ClearMessages();
    EXPECT_EQ(InsertWheel("P1", given), 0) << given;
    EXPECT_NE(Messages().find("InsertParamPart: "), std::string::npos) << given;
  }
  EXPECT_TRUE(Document()["objects"].empty());
}

TEST_F(CadAddin, NothingIsOverwrittenThatAnotherObjectBears) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  const std::string path = folder + "\\Gearbox\\Wheel.dbp";
  const auto before = ReadWholeFile(path);

  EXPECT_EQ(InsertWheel("P2", "<asm>\\WHEEL.DBP", "*view*,MODEL,d,120,b,20"), 0);
  EXPECT_NE(Messages().find("belongs to \"Wheel\""), std::string::npos);
  EXPECT_EQ(ReadWholeFile(path), before);
  EXPECT_EQ(Document()["objects"].size(), 1u);

  ASSERT_EQ(InsertWheel("P2", "<ASM>\\Other.dbp", "*view*,MODEL,d,120,b,20"), 1);
  EXPECT_EQ(cad.ChangeParamPart("P2", "", "*view*,MODEL,d,130,b,20", Reference("P2").c_str(), 1,
                                "<ASM>\\Wheel.dbp", "Wheel", nullptr, 0, 0),
            0);
  EXPECT_EQ(ReadWholeFile(path), before);
  EXPECT_EQ(Object("Other")["parameters"]["d"], "120");
}

TEST_F(CadAddin, EqualPartsShareAFileAndAForeignFileIsLeftAlone) {
  ASSERT_EQ(InsertWheel("P1", "<LIB>\\Wheel.dbp", "*view*,MODEL,d,100,b,20", 0), 1);
  EXPECT_EQ(InsertWheel("P2", "<LIB>\\Wheel.dbp", "*view*,MODEL,d,100,b,20", 0), 1);
  EXPECT_EQ(Object("Wheel (2)")["file"], Object("Wheel")["file"]);

  const std::string foreign = folder + "\\lib\\Drawing.dbp";
  ASSERT_TRUE(drawboard::WriteWholeFile(foreign, "made by hand"));
  EXPECT_EQ(InsertWheel("P3", "<LIB>\\Drawing.dbp"), 0);
  EXPECT_EQ(ReadWholeFile(foreign), "made by hand");
}

TEST_F(CadAddin, ALibraryModelThatIsThePartItselfIsNotWritten) {
  const std::string model = folder + "\\models\\Washer.dbp";
  ASSERT_TRUE(drawboard::WriteWholeFile(model, "{}"));
  for (const char* id : {"P1", "P2"}) {
    EXPECT_EQ(cad.InsertParamPart(id, model.c_str(), "", Reference(id).c_str(), 0, model.c_str(),
                                  id, nullptr, 0),
              1);
  }
  EXPECT_EQ(ReadWholeFile(model), "{}");
}

TEST_F(CadAddin, AChangeKeepsTheFileOrMovesIt) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  const auto change = [&](const char* parameters, const char* path) {
    return cad.ChangeParamPart("P1", "", parameters, Reference("P1", "new").c_str(), 1, path,
                               "Wheel, changed", nullptr, 0, 0);
  };
  const std::string path = folder + "\\Gearbox\\Wheel.dbp";
  ASSERT_EQ(change("*view*,MODEL,d,150,b,20", ""), 1);
  EXPECT_EQ(nlohmann::json::parse(*ReadWholeFile(path))["parameters"]["d"], "150");
  EXPECT_EQ(Object("Wheel")["caption"], "Wheel, changed");
  EXPECT_EQ(Object("Wheel")["connection"], Reference("P1", "new"));

  ASSERT_EQ(change("*view*,MODEL,d,160,b,20", "<WORKSPACE>\\Wheel 160.dbp"), 1);
  EXPECT_FALSE(FileExists(path));
  EXPECT_TRUE(FileExists(folder + "\\work\\Wheel 160.dbp"));
}

TEST_F(CadAddin, AnUpdateDropsOldParametersButKeepsThoseOfTheCad) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Shaft.dbp", "*view*,MODEL,D_1,30,L_1,40,D_2,20,L_2,10"), 1);
  ASSERT_EQ(cad.Drawboard_SetParameter("Shaft", "Keyway", "8,5"), 1);
  ASSERT_EQ(cad.ChangeParamPart("P1", "", "*view*,FRONT,D_1,35,L_1,40", Reference("P1").c_str(), 1,
                                "", "", nullptr, 0, 0),
            1);
  const nlohmann::json expected = {{"D_1", "35"}, {"L_1", "40"}, {"Keyway", "8,5"}};
  EXPECT_EQ(Object("Shaft")["parameters"], expected);
  EXPECT_EQ(Object("Shaft")["view"], "FRONT");
  // An empty list is no list: the part is then made without parameters of the calculation.
  ASSERT_EQ(cad.ChangeParamPart("P1", "", "", Reference("P1").c_str(), 1, "", "", nullptr, 0, 0),
            1);
  EXPECT_EQ(Object("Shaft")["parameters"], expected);
}

TEST_F(CadAddin, AnObjectFollowsTheIdentityInItsConnection) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  ASSERT_EQ(cad.ChangeParamPart("P1", "", "", Reference("F1").c_str(), 0, "", "", nullptr, 0, 0),
            1);
  for (const char* key : {"F1", "P1", "wheel"}) {
    EXPECT_EQ(Read([&](char* text, int* size) { return cad.GetProtocol(key, text, size); }),
              Reference("F1"))
        << key;
  }
  EXPECT_EQ(cad.SetFeaturesState("P1", "Chamfer,1"), 1);
  EXPECT_EQ(cad.ConnectProtocol("F1", Reference("F1", "again").c_str()), 1);
  EXPECT_EQ(cad.ConnectProtocol("nobody", Reference("F1").c_str()), 0);
  EXPECT_EQ(Object("Wheel")["featureStates"]["Chamfer"], "1");
  EXPECT_EQ(Object("Wheel")["connection"], Reference("F1", "again"));
}

TEST_F(CadAddin, RenamingMovesTheFileAndRefusesATakenName) {
  ASSERT_EQ(InsertWheel("P1", "<WORKSPACE>\\Wheel.dbp"), 1);
  ASSERT_EQ(InsertWheel("P2", "<WORKSPACE>\\Pinion.dbp", "*view*,M,d,20,b,20"), 1);
  EXPECT_EQ(cad.RenamePart("P1", "Wheel", "PINION"), 0);
  ASSERT_EQ(cad.RenamePart("P1", "Wheel", "Large wheel"), 1) << Messages();
  EXPECT_TRUE(FileExists(folder + "\\work\\Large wheel.dbp"));
  EXPECT_FALSE(FileExists(folder + "\\work\\Wheel.dbp"));
}

TEST_F(CadAddin, ALibraryModelGivesParametersFeaturesAndConfigurations) {
  const std::string model = folder + "\\models\\Hub.dbp";
  ASSERT_TRUE(drawboard::WriteWholeFile(
      model, R"({"parameters": {"d": "1", "Thread": "M8"}, "features": {"Keyway": "1"},
                 "configurations": ["Long", "Short"]})"));
  ASSERT_EQ(cad.InsertParamPart("P1", model.c_str(), "*view*,M,d,60", Reference("P1").c_str(), 1,
                                "<ASM>\\Hub.dbp", "", nullptr, 0),
            1);
  EXPECT_EQ(Object("Hub")["parameters"], nlohmann::json({{"d", "60"}, {"Thread", "M8"}}));
  EXPECT_EQ(Object("Hub")["featureStates"]["Keyway"], "1");
  char active[16], list[16];
  ASSERT_EQ(cad.GetConfiguration("P1", active, sizeof active, list), 1);
  EXPECT_STREQ(active, "Long");
  EXPECT_STREQ(list, "Long,Short");
  EXPECT_EQ(cad.GetConfiguration("P1", active, 10, list), 0);
  EXPECT_EQ(cad.SetActiveConfiguration("P1", "Medium", ""), 0);
  ASSERT_EQ(cad.SetActiveConfiguration("P1", "Short", ""), 1);
  ASSERT_EQ(cad.GetConfiguration("P1", active, sizeof active, list), 1);
  EXPECT_STREQ(active, "Short");
}

TEST_F(CadAddin, AnotherLibraryModelTakesThePlaceOfTheFirst) {
  const std::string first = folder + "\\models\\A.dbp", second = folder + "\\models\\B.dbp";
  ASSERT_TRUE(drawboard::WriteWholeFile(
      first, R"({"parameters": {"Thread": "M8"}, "features": {"Keyway": "1"}})"));
  ASSERT_TRUE(drawboard::WriteWholeFile(second, R"({"features": {"Groove": "0"}})"));
  ASSERT_EQ(cad.InsertParamPart("P1", first.c_str(), "*view*,M,d,60", Reference("P1").c_str(), 1,
                                "<ASM>\\Hub.dbp", "", nullptr, 0),
            1);
  const auto change = [&](const std::string& model, int modelChanged) {
    return cad.ChangeParamPart("P1", model.c_str(), "*view*,M,d,60", Reference("P1").c_str(), 1, "",
                               "", nullptr, 0, modelChanged);
  };
  ASSERT_EQ(change(first, 0), 1);
  EXPECT_EQ(Object("Hub")["parameters"]["Thread"], "M8");
  ASSERT_EQ(change(second, 1), 1);
  EXPECT_EQ(Object("Hub")["parameters"], nlohmann::json({{"d", "60"}}));
  EXPECT_EQ(Object("Hub")["featureStates"], nlohmann::json({{"Groove", "0"}}));
}

TEST_F(CadAddin, AFeatureBelongsToTheSelectedPartAndADocumentHasOneAssembly) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  ASSERT_EQ(cad.Drawboard_Select("P1"), 1);
  ASSERT_EQ(cad.InsertFeature("", "F1", Reference("F1").c_str(), "<ASM>\\Keyway.dbf", "Keyway",
                              "*view*,M,depth,4"),
            1);
  EXPECT_EQ(Object("Keyway")["featureOf"], "Wheel");

  char caption[1024], id[260];
  for (const char* assembly : {"A1", "A2"}) {
    ASSERT_EQ(cad.InsertAssembly(assembly, "", Reference(assembly).c_str()), 1);
    EXPECT_EQ(Read([&](char* t, int* s) { return cad.GetAssembly(caption, id, t, s); }),
              Reference(assembly));
    EXPECT_STREQ(id, assembly);
  }
  EXPECT_EQ(Document()["objects"].size(), 3u);
}

TEST_F(CadAddin, ViewsOfACalculationKnowWhoseTheyAre) {
  ASSERT_EQ(cad.McStart(0, "Gear", "mm", "P1", ""), 1);
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Main.dbp"), 1);
  ASSERT_EQ(InsertWheel("V1", "<ASM>\\View.dbp", "*view*,SIDE,d,1,b,1"), 1);
  ASSERT_EQ(cad.McEnd(), 1);
  ASSERT_EQ(InsertWheel("P2", "<ASM>\\Next.dbp", "*view*,SIDE,d,2,b,1"), 1);
  EXPECT_EQ(Object("Main")["viewOf"], "");
  EXPECT_EQ(Object("View")["viewOf"], "P1");
  EXPECT_EQ(Object("Next")["viewOf"], "");
  EXPECT_EQ(cad.McEnd(), 0);
  EXPECT_EQ(cad.GroupInsertEnd(), 0);
  EXPECT_EQ(cad.GroupInsertStart(), 1);
  EXPECT_EQ(cad.GroupInsertEnd(), 1);
}
