// 2D objects and the files that the CAD draws.
#include "CadAddin.h"
#include "drawboard/DriveFiles.h"

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

TEST_F(CadAddin, AnImportedModelAndItsPartFileBelongToTheDocument) {
  const std::string model = folder + "\\temp.c3d";
  ASSERT_TRUE(drawboard::WriteWholeFile(model, "solid"));
  ASSERT_EQ(cad.InsertPart(model.c_str(), "P1", Reference("P1").c_str(), 1, "<ASM>\\Body.dbp",
                           "Body", nullptr, 0),
            1);
  EXPECT_EQ(drawboard::ReadWholeFile(folder + "\\Gearbox\\Body.c3d"), "solid");
  char path[260];
  ASSERT_EQ(cad.ExportModelFile("P1", "dbp", path, 0), 1);
  EXPECT_TRUE(drawboard::ReadWholeFile(path));
  EXPECT_EQ(cad.ExportModelFile("P1", "step", path, 0), 0);
  EXPECT_EQ(cad.ChangePart((folder + "\\none.c3d").c_str(), "P1", Reference("P1").c_str(), 1, "",
                           "", nullptr, 0),
            0);
  EXPECT_EQ(Object("Body")["caption"], "Body");
}
