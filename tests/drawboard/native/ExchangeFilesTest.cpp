// Parts of library models through the add-in: weighed as solids, refused in words, shown in files.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "../CadAddin.h"
#include "drawboard/DriveFiles.h"

using drawboard::FilesOf;
using drawboard::ReadWholeFile;
using testing::HasSubstr;

namespace {

constexpr const char* kGear = "C:\\Models\\SpurGear.dbp";
constexpr const char* kShaft = "C:\\Models\\Shaft.dbp";

class Solids : public CadAddin {
 protected:
  int Insert(const char* model, const std::string& id, const std::string& parameters,
             const std::string& file = "") {
    return cad.InsertParamPart(id.c_str(), model, ("*view*,V," + parameters).c_str(),
                               Reference(id).c_str(), 1, file.c_str(), "A part", nullptr, 0);
  }
  int InsertShaft(const std::string& id, const std::string& parameters) {
    return cad.InsertShaft(id.c_str(), kShaft, ("*view*,V," + parameters).c_str(),
                           Reference(id).c_str(), "<ASM>\\Axle.dbp", "Axle", nullptr, 0);
  }
  double VolumeOf(const char* key) {
    double volume = 0;
    EXPECT_EQ(cad.GetPhysicalProperties(key, nullptr, nullptr, nullptr, &volume, nullptr, nullptr,
                                        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              1);
    return volume;
  }
  std::string Parts() const { return folder + "\\Gearbox"; }
};

}  // namespace

TEST_F(Solids, AGearWeighsAsItsTeethAndAnUnknownModelAsItsCylinder) {
  const char* parameters = "z,21,m,2.5,x,0.2,alfa,20,b,30,dh,30,d,52.5,da,58.5,df,47.25";
  ASSERT_EQ(Insert(kGear, "P1", parameters), 1) << Messages();
  ASSERT_EQ(Insert("C:\\Models\\Wheel.dbp", "P2", parameters), 1);
  const double cylinder = std::numbers::pi / 4 * (52.5 * 52.5 - 900) * 30;
  EXPECT_NEAR(VolumeOf("P2"), cylinder, 1e-6);
  EXPECT_GT(std::abs(VolumeOf("P1") - cylinder), 0.01 * cylinder);
  EXPECT_NEAR(VolumeOf("P1"), cylinder, 0.1 * cylinder);
}

TEST_F(Solids, ImpossibleDimensionsLeaveNoPartAndNoFile) {
  EXPECT_EQ(Insert(kGear, "P1", "z,12,m,2,x,1.5,b,10", "<ASM>\\Bad.dbp"), 0);
  EXPECT_THAT(Messages(), HasSubstr("The flanks of the teeth meet below the tip circle"));
  EXPECT_EQ(InsertShaft("P2", "d_1,0,l_1,10"), 0);
  EXPECT_EQ(Document()["objects"].size(), 0u);
  EXPECT_THAT(FilesOf(Parts()), testing::IsEmpty());
  // A change that cannot be leaves the part as it was.
  ASSERT_EQ(InsertShaft("P3", "d_1,20,l_1,10"), 1);
  const double before = VolumeOf("P3");
  EXPECT_EQ(cad.Drawboard_SetParameter("P3", "d_1", "-20"), 0);
  EXPECT_EQ(VolumeOf("P3"), before);
}

TEST_F(Solids, SavingWritesTheFilesOfWhatHasChanged) {
  ASSERT_EQ(InsertShaft("P1", "d_1,20,l_1,40,d_2,30,l_2,60"), 1);
  ASSERT_EQ(Insert(kGear, "P2", "z,12,m,2,b,10", "<ASM>\\Pinion.dbp"), 1);
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

TEST_F(Solids, AKeywayIsCutIntoTheShaftThatItStandsOn) {
  ASSERT_EQ(InsertShaft("P1", "d_1,20,l_1,40,d_2,30,l_2,60"), 1);
  const double whole = VolumeOf("P1");
  ASSERT_EQ(cad.Drawboard_Select("Axle"), 1);
  const auto keyway = [&](const char* id, const char* parameters) {
    return cad.InsertFeature("C:\\Models\\Keyway.dbf", id, Reference(id).c_str(), "", "Keyway",
                             parameters);
  };
  ASSERT_EQ(keyway("F1", "*view*,V,d1,30,bk,8,hk,7,tk,4,lk,40,x,70,form,2"), 1) << Messages();
  EXPECT_NEAR(whole - VolumeOf("P1"), 40 * 8 * 4, 0.1 * 40 * 8 * 4);
  const auto part = nlohmann::json::parse(*ReadWholeFile(Parts() + "\\Axle.dbp"));
  EXPECT_NEAR(std::stod(part["physicalProperties"]["Volume"].get<std::string>()), VolumeOf("P1"),
              1e-3);
  EXPECT_EQ(keyway("F2", "*view*,V,d1,20,bk,6,hk,6,tk,3.5,lk,50,x,20"), 0);
  EXPECT_THAT(Messages(), HasSubstr("does not fit into element 1 of the shaft"));
  // It stays where it is when the shaft is renamed.
  ASSERT_EQ(cad.RenamePart("P1", "Axle", "Spindle"), 1);
  EXPECT_LT(VolumeOf("P1"), whole - 1000);
}
