// The stepped shaft against closed formulas and published figures, and its refusals.
#include <gmock/gmock.h>

#include <cmath>

#include "hexaplan/calculation/ShaftCalculation.h"
#include "hexaplan/calculation/SteppedShaft.h"

namespace hexaplan {
namespace {

constexpr double kPi = 3.14159265358979;

double AreaMoment(double d) { return kPi / 64 * std::pow(d, 4); }

ShaftInput Uniform(double diameter, double length) {
  ShaftInput shaft;
  shaft.sections = {{diameter, length}};
  shaft.support[1] = length;
  shaft.elasticity = 200000;
  shaft.shearModulus = 80000;
  shaft.density = 7850;
  return shaft;
}

ShaftLoad Across(double x, double y, double z = 0) {
  ShaftLoad load;
  load.x = x;
  load.forceY = y;
  load.forceZ = z;
  return load;
}

// Beam tables (for example Shigley, table A-9): centre load F L3 / 48 E I; off-centre load;
// overhang load F a2 (l + a) / 3 E I at its end.
TEST(Shaft, DeflectsAsBeamTablesSay) {
  ShaftInput shaft = Uniform(40, 600);
  shaft.loads = {Across(300, -1000)};
  ShaftResult r = CalculateShaft(shaft);
  const double stiffness = 200000 * AreaMoment(40);
  EXPECT_NEAR(r.reactionY[0], 500, 1e-9);
  EXPECT_NEAR(r.maxMoment, 150, 1e-9);
  EXPECT_NEAR(r.maxDeflection, 1000 * std::pow(600, 3) / (48 * stiffness), 1e-9);
  EXPECT_NEAR(r.supportSlope[0], 1000 * 600.0 * 600.0 / (16 * stiffness), 1e-12);
  EXPECT_NEAR(r.maxBending, 150e3 * 32 / (kPi * 64000), 1e-9);

  shaft.support[1] = 450;
  shaft.loads = {Across(600, 0, -800)};
  r = CalculateShaft(shaft);
  EXPECT_NEAR(r.reactionZ[0], -800 * 150.0 / 450, 1e-9);
  EXPECT_NEAR(r.reactionZ[1], 800 * 600.0 / 450, 1e-9);
  EXPECT_NEAR(r.maxDeflection, 800 * 150.0 * 150 * 600 / (3 * stiffness), 1e-9);
  EXPECT_NEAR(r.maxDeflectionAt, 600, 1e-9);
}

// Gere, Mechanics of Materials, example of a beam with a reinforced middle half (2 EI): centre load
// P gives 3 P L3 / 256 EI in the middle and 5 P L2 / 128 EI at the supports.
TEST(Shaft, SteppedBeamOfATextbook) {
  ShaftInput shaft = Uniform(30, 800);
  const double thick = 30 * std::pow(2.0, 0.25);
  shaft.sections = {{30, 200}, {thick, 400}, {30, 200}};
  shaft.loads = {Across(400, -1200)};
  const ShaftResult r = CalculateShaft(shaft);
  const double stiffness = 200000 * AreaMoment(30);
  EXPECT_NEAR(r.maxDeflection, 3 * 1200 * std::pow(800, 3) / (256 * stiffness), 1e-8);
  EXPECT_NEAR(r.supportSlope[1], 5 * 1200 * 800.0 * 800 / (128 * stiffness), 1e-11);
  // The largest stress is where the thin ends begin or in the middle: there M = 240 and 120 Nm.
  const double middle = 240e3 * 32 / (kPi * std::pow(thick, 3));
  const double step = 120e3 * 32 / (kPi * std::pow(30, 3));
  EXPECT_NEAR(r.maxBending, std::max(middle, step), 1e-9);
}

// By hand: both planes at once, torsion between two wheels, axial force to the second bearing.
TEST(Shaft, CombinesPlanesTorsionAndAxialForce) {
  ShaftInput shaft = Uniform(30, 400);
  shaft.axialSupport = 1;
  ShaftLoad first = Across(100, 3000, 0);
  first.torque = 120;
  ShaftLoad second = Across(300, 0, 4000);
  second.torque = -120;
  second.forceX = 2000;
  shaft.loads = {first, second};
  const ShaftResult r = CalculateShaft(shaft);
  EXPECT_NEAR(r.reactionY[0], -2250, 1e-9);
  EXPECT_NEAR(r.reactionZ[1], -3000, 1e-9);
  EXPECT_NEAR(r.reactionX, -2000, 1e-9);
  EXPECT_NEAR(r.maxTorque, 120, 1e-12);
  EXPECT_NEAR(r.twist, -120e3 * 200 / (80000 * 2 * AreaMoment(30)) * 180 / kPi, 1e-9);
  // At 300 mm: My = 75, Mz = 300 Nm; the axial force acts from there to the right bearing.
  const double modulus = kPi * 27000 / 32;
  const double bending = std::hypot(75, 300) * 1000 / modulus;
  const double direct = 2000 / (kPi * 225);
  const double torsion = 120e3 / (2 * modulus);
  EXPECT_NEAR(r.maxBending, bending, 1e-9);
  EXPECT_NEAR(r.maxTorsion, torsion, 1e-9);
  EXPECT_NEAR(r.maxEquivalent,
              std::max(std::hypot(bending, std::sqrt(3.0) * torsion), bending + direct), 1e-9);
  EXPECT_NEAR(r.mass, kPi * 225 * 400 * 7850e-9, 1e-9);
}

TEST(Shaft, MomentLoadJumpsInTheMomentLine) {
  ShaftInput shaft = Uniform(30, 400);
  ShaftLoad load;
  load.x = 100;
  load.bendingY = 80;
  shaft.loads = {load};
  const ShaftResult r = CalculateShaft(shaft);
  EXPECT_NEAR(r.reactionY[0], -200, 1e-9);
  EXPECT_NEAR(r.reactionY[1], 200, 1e-9);
  EXPECT_NEAR(r.maxMoment, 60, 1e-9);
}

TEST(Shaft, RefusesWhatIsNotHeldOrNotBalanced) {
  const struct {
    std::vector<std::pair<const char*, const char*>> inputs;
    const char* message;
  } cases[] = {
      {{{"PX_1", "151"}}, "Field \"PX_1\": the bearing lies outside the shaft, which is 150 mm"},
      {{{"PX_0", "100"}, {"PX_1", "50"}}, "Field \"PX_1\": the second bearing must stand"},
      {{{"#spinForces", "1"}, {"ZX_0", "200"}}, "Field \"ZX_0\": the load lies outside"},
      {{{"#spinForces", "1"}, {"ZM0_0", "50"}}, "Field \"ZM0\": the torques of all loads"},
      {{{"axial_0", "1"}, {"axial_1", "1"}}, "Field \"axial_1\": only one bearing"},
      {{{"PX_0", "0"}, {"PShaftID_1", "4"}}, "Field \"PShaftID_1\": the shaft has only 3"},
      {{{"#spiType_2", "5"}}, "Field \"#spiType_2\": conical sections"},
      {{{"d_2", "0"}}, "Field \"d_2\": 0 is outside 1 to 3000 mm"},
      {{{"d_4", "30"}}, "Field \"d_4\": the calculation \"Stepped shaft\" has no such field."},
      {{{"#spinForces", "1"}, {"ZQ0_0", "3"}}, "Field \"ZQ0_0\": 3 is outside 0 to 0 N/mm"},
  };
  for (const auto& each : cases) {
    Inputs inputs;
    for (const auto& [name, text] : each.inputs) inputs.SetOrdered(name, text);
    try {
      Shafts().Run(inputs);
      ADD_FAILURE() << "not refused: " << each.message;
    } catch (const InputError& error) {
      EXPECT_THAT(error.what(), testing::StartsWith(each.message));
    }
  }
}

// Older protocols place bearings and loads within sections.
TEST(Shaft, ReadsPlacesWithinSections) {
  Inputs inputs;
  inputs.SetStored("PShaftID_0", "1");
  inputs.SetStored("PXrel_0", "10");
  inputs.SetStored("PShaftID_1", "3");
  inputs.SetStored("PXrel_1", "40");
  inputs.SetStored("#spinForces", "1");
  inputs.SetStored("ZShaftID_0", "2");
  inputs.SetStored("ZXrel_0", "25");
  inputs.SetStored("ZF1_0", "-1000");
  const auto parts = Shafts().Run(inputs);
  const auto value = [&](const std::string& name) -> std::string {
    for (const DataParameter& each : parts[0].parameters) {
      if (each.name == name) return each.value + " " + each.unit;
    }
    return "missing";
  };
  EXPECT_EQ(value("PX_0"), "10 mm");
  EXPECT_EQ(value("PX_1"), "140 mm");
  EXPECT_EQ(value("ZX_0"), "75 mm");
  EXPECT_EQ(value("PF1_1"), "500 N");
}

}  // namespace
}  // namespace hexaplan
