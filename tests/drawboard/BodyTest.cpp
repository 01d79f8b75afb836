// Parts of library models on both targets: what cannot be is refused, features change their part.
#include <gmock/gmock.h>

#include "Bodies.h"
#include "drawboard/DriveFiles.h"

using drawboard::FilesOf;
using drawboard::ReadWholeFile;
using testing::HasSubstr;

TEST_F(Bodies, ImpossibleDimensionsLeaveNoPartAndNoFile) {
  EXPECT_EQ(Insert(kGearModel, "P1", "z,12,m,2,x,1.5,b,10", "<ASM>\\Bad.dbp"), 0);
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

TEST_F(Bodies, AKeywayIsCutIntoTheShaftThatItStandsOn) {
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
