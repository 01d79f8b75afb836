// Masses against hand formulas.
#include <cmath>
#include <numbers>

#include "CadAddin.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kSteel = 7.85e-6;  // kg/mm3

struct Properties {
  double x = 0, y = 0, z = 0, volume = 0, area = 0, mass = 0;
  double xx = 0, yy = 0, zz = 0, xy = 0, xz = 0, yz = 0;
};

Properties Ask(const AddinFunctions& cad, const char* key) {
  Properties p;
  EXPECT_EQ(cad.GetPhysicalProperties(key, &p.x, &p.y, &p.z, &p.volume, &p.area, &p.mass, &p.xx,
                                      &p.yy, &p.zz, &p.xy, &p.xz, &p.yz),
            1);
  return p;
}

}  // namespace

TEST_F(CadAddin, AWheelWeighsAsItsReferenceCylinderLessTheBore) {
  ASSERT_EQ(InsertWheel("P1", "", "*view*,M,z,40,m,2.5,d,100,da,105,dh,30,b,20"), 1);
  const Properties p = Ask(cad, "P1");
  const double volume = kPi * (50.0 * 50 - 15 * 15) * 20;
  EXPECT_NEAR(p.volume, volume, 1e-6);
  EXPECT_NEAR(p.mass, volume * kSteel, 1e-12);
  EXPECT_NEAR(p.area, 2 * kPi * (2500 - 225) + 2 * kPi * (50 + 15) * 20, 1e-6);
  EXPECT_NEAR(p.x, 10, 1e-12);
  EXPECT_NEAR(p.xx, p.mass * (2500 + 225) / 2, 1e-9);
  EXPECT_NEAR(p.yy, p.mass * (3 * (2500 + 225) + 400) / 12, 1e-9);
  EXPECT_EQ(Read([&](char* t, int* s) { return cad.GetReferenceDims("P1", t, s); }),
            "Length,20,Height,105");
}

TEST_F(CadAddin, AShaftWeighsAsItsSteps) {
  ASSERT_EQ(cad.InsertShaft("P1", "", "*view*,M,D_1,40,L_1,50,D_2,20,L_2,30,ro,2700",
                            Reference("P1").c_str(), "", "", nullptr, 0),
            1);
  const Properties p = Ask(cad, "P1");
  const double v1 = kPi * 400 * 50, v2 = kPi * 100 * 30;
  EXPECT_NEAR(p.volume, v1 + v2, 1e-6);
  EXPECT_NEAR(p.mass, (v1 + v2) * 2.7e-6, 1e-12);
  EXPECT_NEAR(p.x, (v1 * 25 + v2 * 65) / (v1 + v2), 1e-9);
  EXPECT_NEAR(p.area, kPi * (40 * 50 + 20 * 30) + 2 * kPi * 400, 1e-6);
  const double m1 = v1 * 2.7e-6, m2 = v2 * 2.7e-6;
  const double across = m1 * (3 * 400.0 + 2500) / 12 + m1 * std::pow(25 - p.x, 2) +
                        m2 * (3 * 100.0 + 900) / 12 + m2 * std::pow(65 - p.x, 2);
  EXPECT_NEAR(p.yy, across, 1e-9);
  EXPECT_NEAR(p.zz, across, 1e-9);
}

TEST_F(CadAddin, ACamWeighsAsThePrismOfItsProfile) {
  // A rectangle of 40 by 20, its corner in the origin, clockwise.
  const double x[] = {0, 0, 40, 40}, y[] = {0, 20, 20, 0};
  ASSERT_EQ(cad.InsertCamPart("C1", 4, x, y, 0, "mm", Reference("C1").c_str(), "", "", nullptr, 0),
            1);
  const Properties p = Ask(cad, "C1");
  EXPECT_NEAR(p.volume, 40 * 20 * 10, 1e-9);
  EXPECT_NEAR(p.area, 2 * 800 + 120 * 10, 1e-9);
  EXPECT_NEAR(p.x, 20, 1e-12);
  EXPECT_NEAR(p.y, 10, 1e-12);
  EXPECT_NEAR(p.xx, p.mass * (20 * 20 + 10 * 10) / 12, 1e-12);
  EXPECT_NEAR(p.yy, p.mass * (40 * 40 + 10 * 10) / 12, 1e-12);
  EXPECT_NEAR(p.zz, p.mass * (40 * 40 + 20 * 20) / 12, 1e-12);
  EXPECT_NEAR(p.xy, 0, 1e-12);
  // The same profile from the parameters of a calculation.
  ASSERT_EQ(cad.InsertCamPartEx("C2",
                                "*view*,M,cPoint,4,l_1,10,a_1,0,l_2,10,a_2,90,l_3,10,a_3,"
                                "180,l_4,10,a_4,270,b,5,dh,8",
                                Reference("C2").c_str(), "", "", "", nullptr, 0),
            1);
  const Properties bored = Ask(cad, "C2");
  EXPECT_NEAR(bored.volume, (200 - 16 * kPi) * 5, 1e-9);
  EXPECT_NEAR(bored.area, 2 * (200 - 16 * kPi) + 5 * (4 * std::sqrt(200) + 8 * kPi), 1e-9);
  // Of the square less that of the circle, about the axis.
  EXPECT_NEAR(bored.zz, 5 * kSteel * (200 * 200 / 6.0 - kPi * 4096 / 32), 1e-12);
}

TEST_F(CadAddin, AnInchDocumentWeighsInPounds) {
  ASSERT_EQ(cad.Drawboard_NewDocument((folder + "\\Inch.json").c_str(), "in"), 1);
  ASSERT_EQ(InsertWheel("P1", "", "*view*,M,d,2,b,1"), 1);
  const Properties p = Ask(cad, "P1");
  EXPECT_NEAR(p.volume, kPi, 1e-12);
  EXPECT_NEAR(p.mass, kPi * 16387.064 * kSteel / 0.45359237, 1e-9);
  int inch = 0;
  EXPECT_EQ(cad.IsInchUserPart("P1", &inch), 1);
  EXPECT_EQ(inch, 1);
}

TEST_F(CadAddin, BodiesThatCannotBeHaveNoMass) {
  for (const char* parameters :
       {"*view*,M", "*view*,M,d,100", "*view*,M,d,100,b,-2", "*view*,M,d,20,dh,20,b,5",
        "*view*,M,d,x,b,5", "*view*,M,D_1,0,L_1,5", "*view*,M,cPoint,2,l_1,1,a_1,0"}) {
    const std::string id = std::string("P") + parameters;
    ASSERT_EQ(InsertWheel(id, "", parameters), 1);
    double volume = -1;
    EXPECT_EQ(
        cad.GetPhysicalProperties(id.c_str(), nullptr, nullptr, nullptr, &volume, nullptr, nullptr,
                                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
        0)
        << parameters;
    EXPECT_EQ(volume, -1);
  }
}

TEST_F(CadAddin, PropertiesAsAListHaveTheirTwelveNamesInOrder) {
  ASSERT_EQ(InsertWheel("P1", "", "*view*,M,d,2,b,1,ro,1e9"), 1);
  EXPECT_EQ(Read([&](char* t, int* s) { return cad.GetPhysicalPropertiesEx("P1", t, s); }),
            "CenterOfMassX,0.5,CenterOfMassY,0,CenterOfMassZ,0,Volume,3.1415927,Area,12.566371,"
            "Mass,3.1415927,MomXX,1.5707963,MomYY,1.0471976,MomZZ,1.0471976,MomXY,0,MomXZ,0,"
            "MomYZ,0");
}
