// Parts of library models through the add-in with its solid modeller: weighed as solids, shown in
// files.
#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <numbers>

#include "../Bodies.h"
#include "drawboard/DriveFiles.h"
#include "platform/native/Machine.h"

using drawboard::FilesOf;
using drawboard::ReadWholeFile;
using testing::HasSubstr;

TEST_F(Bodies, AGearWeighsAsItsTeethAndAnUnknownModelAsItsCylinder) {
  const char* parameters = "z,21,m,2.5,x,0.2,alfa,20,b,30,dh,30,d,52.5,da,58.5,df,47.25";
  ASSERT_EQ(Insert(kGearModel, "P1", parameters), 1) << Messages();
  ASSERT_EQ(Insert("C:\\Models\\Wheel.dbp", "P2", parameters), 1);
  const double cylinder = std::numbers::pi / 4 * (52.5 * 52.5 - 900) * 30;
  EXPECT_NEAR(VolumeOf("P2"), cylinder, 1e-6);
  EXPECT_GT(std::abs(VolumeOf("P1") - cylinder), 0.01 * cylinder);
  EXPECT_NEAR(VolumeOf("P1"), cylinder, 0.1 * cylinder);
}

TEST_F(Bodies, SavingWritesTheFilesOfWhatHasChanged) {
  ASSERT_EQ(InsertShaft("P1", "d_1,20,l_1,40,d_2,30,l_2,60"), 1);
  ASSERT_EQ(Insert(kGearModel, "P2", "z,12,m,2,b,10", "<ASM>\\Pinion.dbp"), 1);
  EXPECT_THAT(FilesOf(Parts()), testing::ElementsAre("Axle.dbp", "Pinion.dbp"));
  ASSERT_EQ(cad.Drawboard_SaveDocument(""), 1);
  EXPECT_THAT(FilesOf(Parts()),
              testing::ElementsAre("Axle.dbp", "Axle.glb", "Axle.step", "Axle.svg", "Pinion.dbp",
                                   "Pinion.glb", "Pinion.step", "Pinion.svg"));
  EXPECT_THAT(*ReadWholeFile(Parts() + "\\Axle.step"), HasSubstr("PRODUCT('Axle'"));
  const auto assembly = ReadWholeFile(folder + "\\Gearbox.step");
  ASSERT_TRUE(assembly);
  EXPECT_THAT(*assembly, HasSubstr("PRODUCT('Gearbox'"));
  EXPECT_TRUE(ReadWholeFile(folder + "\\Gearbox.glb"));

  const std::string pinion = *ReadWholeFile(Parts() + "\\Pinion.svg");
  const std::string axle = *ReadWholeFile(Parts() + "\\Axle.svg");
  ASSERT_TRUE(drawboard::WriteWholeFile(Parts() + "\\Axle.svg", "kept"));
  ASSERT_EQ(cad.Drawboard_SetParameter("P2", "z", "14"), 1);
  ASSERT_EQ(cad.Drawboard_SaveDocument(""), 1);
  EXPECT_EQ(*ReadWholeFile(Parts() + "\\Axle.svg"), "kept");
  EXPECT_NE(*ReadWholeFile(Parts() + "\\Pinion.svg"), pinion);
  // The same part gives the same bytes again.
  ASSERT_EQ(cad.Drawboard_SetParameter("P2", "z", "12"), 1);
  ASSERT_EQ(cad.Drawboard_SetParameter("P1", "note", "new"), 1);
  ASSERT_EQ(cad.Drawboard_SaveDocument(""), 1);
  EXPECT_EQ(*ReadWholeFile(Parts() + "\\Axle.svg"), axle);
  EXPECT_EQ(*ReadWholeFile(Parts() + "\\Pinion.svg"), pinion);
  // A part that moves takes its files along at the next saving.
  ASSERT_EQ(cad.RenamePart("P2", "Pinion", "Sun"), 1);
  EXPECT_FALSE(ReadWholeFile(Parts() + "\\Pinion.step"));
  ASSERT_EQ(cad.Drawboard_SaveDocument(""), 1);
  EXPECT_THAT(*ReadWholeFile(Parts() + "\\Sun.step"), HasSubstr("PRODUCT('Sun'"));
  EXPECT_EQ(Messages(), "");
}

// As a reader of DXF files finds it that is not ours.
TEST_F(Bodies, TheDrawingOfTheDocumentIsReadByOthers) {
  const std::string path = folder + "\\drawing.dxf";
  const auto read = [&] {
    EXPECT_EQ(cad.CreateDxfFile(path.c_str()), 1) << Messages();
    const auto file = quillmar::platform::Machine::Current().HostPath(path);
    const std::string command = QUILLMAR_READ_DXF " " + file.string();
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) {
      output += static_cast<char>(c);
    }
    return output;
  };
  ASSERT_EQ(InsertShaft("P1", "d_1,20,l_1,40,d_2,30,l_2,60"), 1);
  ASSERT_EQ(Insert("C:\\Models\\Wheel.dbp", "P2", "d,50,b,10,dh,20"), 1);
  // The wheel stands a tenth of the shaft's length beside it.
  const std::string extents = "0.000 -25.000 120.000 25.000\n";
  EXPECT_EQ(read(), "AC1009\nPOLYLINE 0 3\n" + extents + extents + "0 0\n");
}

// Only the modeller sees that the profile crosses itself.
TEST_F(Bodies, WhatTheModellerRefusesIsNotInserted) {
  std::string parameters = "*view*,V,b,10,cPoint,40";
  for (int i = 0; i < 40; ++i) {
    const std::string row = "_" + std::to_string(i + 1) + ",";
    // An eight that is traced across its middle.
    const double angle = 2 * std::numbers::pi * (i + 0.5) / 40;
    const double x = 30 * std::sin(angle), y = 20 * std::sin(2 * angle) + x / 10;
    parameters += ",l" + row + std::to_string(std::hypot(x, y)) + ",a" + row +
                  std::to_string(std::atan2(x, y) * 180 / std::numbers::pi);
  }
  EXPECT_EQ(cad.InsertCamPartEx("P1", parameters.c_str(), Reference("P1").c_str(), "",
                                "C:\\Models\\DiscCam.dbp", "Cam", nullptr, 0),
            0);
  EXPECT_THAT(Messages(), HasSubstr("InsertCamPartEx: The part's surfaces cross each other"));
  EXPECT_EQ(Document()["objects"].size(), 0u);
}
