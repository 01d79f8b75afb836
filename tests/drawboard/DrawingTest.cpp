// 2D objects and the files that the CAD draws.
#include <gmock/gmock.h>

#include "CadAddin.h"
#include "drawboard/DriveFiles.h"

using testing::HasSubstr;

namespace {

// The facets of a box between the origin and that corner.
std::string BoxFacets(double x, double y, double z) {
  std::string text = "solid box\n";
  const auto corner = [&](unsigned which) {
    for (const auto& [bit, size] : {std::pair{1u, x}, {2u, y}, {4u, z}}) {
      text += (bit == 1 ? "vertex " : " ") + std::to_string((which & bit) != 0 ? size : 0.0);
    }
    text += "\n";
  };
  constexpr unsigned kSides[][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                    {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
  for (const auto& [a, b, c, d] : kSides) {
    for (const unsigned each : {a, b, c, a, c, d}) corner(each);
  }
  return text;
}

}  // namespace

TEST_F(CadAddin, ADrawingIsCopiedBecauseTheHostsFileIsTemporary) {
  const std::string drawing = folder + "\\temp.dxf";
  ASSERT_TRUE(drawboard::WriteWholeFile(drawing, "first"));
  char name[] = "BOM1", value[] = "Sheet";
  const ExtDataPair pair{name, value};
  ASSERT_EQ(
      cad.Insert2dPart(drawing.c_str(), "D1", Reference("D1").c_str(), 1, &pair, 1, 1.5, -2, 3), 1);
  ASSERT_TRUE(drawboard::WriteWholeFile(drawing, "second"));
  const auto placed = Object("drawing");
  EXPECT_EQ(placed["placement"]["x"], 1.5);
  EXPECT_EQ(placed["placement"]["y"], -2.0);
  EXPECT_EQ(placed["placement"]["level"], 3.0);
  EXPECT_EQ(placed["extendedData"]["BOM1"], "Sheet");
  const std::string copy = placed["placement"]["drawingFile"];
  EXPECT_EQ(drawboard::ReadWholeFile(copy), "first");
  ASSERT_EQ(
      cad.Change2dPart(drawing.c_str(), "D1", Reference("D1").c_str(), 0, nullptr, 0, 0, 0, 0), 1);
  EXPECT_EQ(drawboard::ReadWholeFile(copy), "second");

  EXPECT_EQ(
      cad.InsertSymbol((folder + "\\none.dxf").c_str(), "S1", Reference("S1").c_str(), 1, "SP"), 0);
  EXPECT_EQ(cad.InsertSymbol("", "S1", Reference("S1").c_str(), 1, "SP"), 1);
  EXPECT_EQ(Object("symbol")["placement"]["namePrefix"], "SP");
}

TEST_F(CadAddin, DxfAndPreviewShowTheOutlinesOfTheModel) {
  ASSERT_EQ(InsertWheel("P1", "", "*view*,M,d,100,dh,20,b,10"), 1);
  ASSERT_EQ(InsertWheel("P2", "", "*view*,M,d,60,b,10"), 1);
  ASSERT_EQ(cad.InsertCalculation("K1", Reference("K1").c_str(), "no body"), 1);
  const std::string dxf = folder + "\\model.dxf";
  ASSERT_EQ(cad.CreateDxfFile(dxf.c_str()), 1);
  const auto text = drawboard::ReadWholeFile(dxf);
  ASSERT_TRUE(text);
  EXPECT_TRUE(text->starts_with("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n"));
  EXPECT_TRUE(text->ends_with("0\nENDSEC\n0\nEOF\n"));
  int outlines = 0;
  for (auto at = text->find("POLYLINE"); at != std::string::npos;
       at = text->find("POLYLINE", at + 1)) {
    ++outlines;
  }
  EXPECT_EQ(outlines, 3) << "a rim with its bore, a rim";
  EXPECT_NE(text->find("10\n10\n20\n50\n"), std::string::npos);
  EXPECT_NE(text->find("10\n11\n20\n30\n"), std::string::npos) << "the second beside the first";

  const std::string begin = folder + "\\picture";
  std::string buffer = begin + std::string(11, '\0');
  ASSERT_EQ(cad.CreatePreview(buffer.data()), 1);
  EXPECT_EQ(std::string(buffer.c_str()), begin + ".svg");
  EXPECT_NE(drawboard::ReadWholeFile(begin + ".svg")->find("<polygon"), std::string::npos);
  EXPECT_EQ(cad.CreateDxfFile((folder + "\\picture.svg\\x.dxf").c_str()), 0);
}

TEST_F(CadAddin, DrawingsOfAUserPartEnd) {
  const std::string begin = folder + "\\Lever";
  const auto draws = [&](const std::string& rest) {
    return cad.CreateDxfFile((begin + rest + ".dxf").c_str());
  };
  std::string buffer = begin + std::string(11, '\0');
  ASSERT_EQ(cad.CreatePreview(buffer.data()), 1);
  EXPECT_EQ(draws("0"), 0) << "nothing to draw";
  ASSERT_EQ(InsertWheel("P1", "", "*view*,M,d,100,dh,20,b,10"), 1);
  EXPECT_EQ(draws("0"), 1);
  EXPECT_EQ(draws("1"), 0);
  ASSERT_EQ(InsertWheel("P2", "", "*view*,M,d,60,b,10"), 1);
  for (const char* number : {"0", "1", "2", "", "x"}) EXPECT_EQ(draws(number), 1) << number;
  EXPECT_EQ(draws("3"), 0);
  EXPECT_NE(drawboard::ReadWholeFile(begin + "1.dxf"), drawboard::ReadWholeFile(begin + "2.dxf"));
}

TEST_F(CadAddin, AnImportedModelIsABodyOfTheDocument) {
  const std::string model = folder + "\\temp.c3d";
  const auto offer = [&](const std::string& contents) {
    ASSERT_TRUE(drawboard::WriteWholeFile(model, contents));
  };
  offer(BoxFacets(10, 20, 30));
  const auto insert = [&](const char* id, const std::string& path) {
    return cad.InsertPart(model.c_str(), id, Reference(id).c_str(), 1, path.c_str(), "Body",
                          nullptr, 0);
  };
  ASSERT_EQ(insert("P1", "<ASM>\\Body.dbp"), 1) << Messages();
  EXPECT_EQ(drawboard::ReadWholeFile(folder + "\\Gearbox\\Body.c3d"), BoxFacets(10, 20, 30));
  const auto weighs = [&](const std::map<std::string, double>& expected) {
    const auto properties = Object("Body")["physicalProperties"];
    for (const auto& [name, value] : expected) {
      EXPECT_NEAR(std::stod(properties[name].get<std::string>()), value, 1e-6 * value + 1e-9)
          << name;
    }
  };
  const double mass = 6000 * 7.85e-6;
  const std::map<std::string, double> box = {{"CenterOfMassX", 5},
                                             {"CenterOfMassY", 10},
                                             {"CenterOfMassZ", 15},
                                             {"Volume", 6000},
                                             {"Area", 2200},
                                             {"Mass", mass},
                                             {"MomXX", mass * 1300 / 12},
                                             {"MomYY", mass * 1000 / 12},
                                             {"MomZZ", mass * 500 / 12},
                                             {"MomXY", 0}};
  weighs(box);
  ASSERT_EQ(cad.Drawboard_OpenDocument(document.c_str()), 1);
  ASSERT_EQ(cad.Drawboard_SaveDocument(""), 1);
  weighs(box);
  EXPECT_THAT(*drawboard::ReadWholeFile(folder + "\\Gearbox\\Body.svg"),
              HasSubstr("<polygon points=\"0,0 10,0 10,-20 0,-20\"/>\n</svg>"));

  offer(BoxFacets(10, 20, 60));
  const auto change = [&] {
    return cad.ChangePart(model.c_str(), "P1", Reference("P1").c_str(), 1, "", "Body", nullptr, 0);
  };
  ASSERT_EQ(change(), 1) << Messages();
  weighs({{"Volume", 12000}, {"CenterOfMassZ", 30}});

  // What encloses no body is refused, and leaves the part as it was.
  for (const auto& [contents, message] :
       {std::pair<std::string, const char*>{"solid", "holds no facets"},
        {"vertex 0 0 x", "is no number"},
        {"vertex 0 0 2e6 ", "larger than a kilometre"},
        {BoxFacets(1, 1, 1) + "vertex 0 0 0 vertex 1 0 0 vertex 0 1 0", "is not closed"},
        {BoxFacets(-1, 1, 1), "has no volume"},
        {BoxFacets(1, 1, 0), "has no volume"}}) {
    offer(contents);
    EXPECT_EQ(change(), 0) << contents;
    EXPECT_THAT(Messages(), HasSubstr(message));
  }
  EXPECT_EQ(insert("P2", ""), 0);
  weighs({{"Volume", 12000}});
  EXPECT_EQ(drawboard::ReadWholeFile(folder + "\\Gearbox\\Body.c3d"), BoxFacets(10, 20, 60));

  char path[260];
  ASSERT_EQ(cad.ExportModelFile("P1", "dbp", path, 0), 1);
  EXPECT_TRUE(drawboard::ReadWholeFile(path));
  EXPECT_EQ(cad.ExportModelFile("P1", "step", path, 0), 0);
  EXPECT_EQ(cad.ChangePart((folder + "\\none.c3d").c_str(), "P1", Reference("P1").c_str(), 1, "",
                           "", nullptr, 0),
            0);
  EXPECT_EQ(Object("Body")["caption"], "Body");
}
