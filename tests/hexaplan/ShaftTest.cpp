// The stepped shaft against closed formulas and published figures, and its refusals.
#include <gmock/gmock.h>

#include <cmath>
#include <map>

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
      {{{"#spiType_2", "18"}}, "Field \"#spiType_2\": 18 is outside 1 to 17 (kind of the"},
      {{{"#spiType_2", "3"}, {"KEY_L_2", "30"}},
       "Field \"KEY_B_2\": give the width of the keyway. The standard's keyway for this diameter "
       "is "
       "12 mm wide and 5 mm deep."},
      {{{"#spiType_2", "3"},
        {"KEY_L_2", "30"},
        {"KEY_B_2", "12"},
        {"KEY_T_2", "5"},
        {"KEY_LR_2", "21"}},
       "Field \"KEY_L_2\": it reaches beyond section 2, which is 50 mm long."},
      {{{"#spiType_2", "3"}, {"KEY_L_2", "30"}, {"KEY_B_2", "21"}, {"KEY_T_2", "5"}},
       "Field \"KEY_B_2\": the keyway is wider than half the shaft."},
      {{{"KEY_B_2", "12"}},
       "Field \"KEY_B_2\": section 2 is a plain cylinder; for a section with a keyway its #spiType "
       "is 3."},
      {{{"#spiType_1", "2"}, {"RR_M_1", "2"}, {"RR_d1_1", "40"}},
       "Field \"RR_d1_1\": it leaves a diameter of 40 mm of the 40 mm of section 1."},
      {{{"#spiType_1", "16"}, {"Pr_R_1", "18"}, {"Pr_X_1", "30"}}, "Field \"Pr_n_1\": so many"},
      {{{"r_1", "2"}},
       "Field \"r_1\": there is no shoulder behind section 1: both diameters are 40 mm"},
      {{{"d_2", "50"}, {"r_1", "60"}}, "Field \"r_1\": the fillet is longer than the section"},
      {{{"Rm", "300"}},
       "Field \"Rm\": the ultimate strength of 300 MPa is below the yield strength of"},
      {{{"reliability", "100"}}, "Field \"reliability\": 100 is outside 50 to 99.9999"},
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

// The named parameters of a shaft calculated from these inputs.
std::map<std::string, double> Calculated(
    const std::vector<std::pair<const char*, const char*>>& given) {
  Inputs inputs;
  for (const auto& [name, text] : given) inputs.SetOrdered(name, text);
  std::map<std::string, double> values;
  const auto parts = Calculate(Shafts(), inputs);
  for (const DataParameter& each : parts.front().parameters) {
    ParseNumber(each.value, values[each.name]);
  }
  return values;
}

// R. G. Budynas, J. K. Nisbett, Shigley's Mechanical Engineering Design, 9th edition:
// example 7-1, a shoulder (there Kt 1.68, Kts 1.42, Kf 1.58, Kfs 1.37, Se 29.3 kpsi, safety 1.62);
// example 7-2, the shoulder I of a countershaft (Kf 1.49, stresses 12.91 and 8.659 kpsi against
// 25.1 and 68: safety 1.56), its keyway (Kf 1.74, Kfs 2.42, safety 1.17) and the same of stronger
// steel (Kf 1.82, Se 33.3 kpsi, 1.54; it keeps Kfs). The book reads Kt and q from charts, hence 3
// %. Each shaft here is 10 in long with a force in the middle that makes the book's moment.
TEST(Shaft, SafetiesOfPublishedExamplesInInches) {
  const struct {
    const char* name;
    std::vector<std::pair<const char*, const char*>> inputs;
    double kf, kfs, endurance, safety;
  } cases[] = {
      {"7-1",
       {{"d_1", "1.1"},
        {"d_2", "1.65"},
        {"r_1", "0.11"},
        {"Rm", "105000"},
        {"Re", "82000"},
        {"ZF1_0", "-504"},
        {"ZM0_1", "1100"},
        {"ZM0_2", "-1100"}},
       1.58,
       1.37,
       29300,
       1.62},
      {"7-2, shoulder",
       {{"d_1", "1.625"},
        {"d_2", "2"},
        {"r_1", "0.16"},
        {"Rm", "68000"},
        {"Re", "57000"},
        {"reliability", "50"},
        {"ZF1_0", "-1460.4"},
        {"ZM0_1", "3240"},
        {"ZM0_2", "-3240"}},
       1.49,
       1.30,
       25100,
       1.56},
      {"7-2, keyway",
       {{"d_1", "1.625"},
        {"d_2", "1.625"},
        {"#spiType_1", "3"},
        {"KEY_LR_1", "2"},
        {"KEY_L_1", "3"},
        {"KEY_B_1", "0.375"},
        {"KEY_T_1", "0.1875"},
        {"Rm", "68000"},
        {"Re", "57000"},
        {"reliability", "50"},
        {"ZF1_0", "-1500"},
        {"ZM0_1", "3240"},
        {"ZM0_2", "-3240"}},
       1.74,
       2.42,
       25100,
       1.17},
      {"7-2, keyway in 1050 CD",
       {{"d_1", "1.625"},
        {"d_2", "1.625"},
        {"#spiType_1", "3"},
        {"KEY_LR_1", "2"},
        {"KEY_L_1", "3"},
        {"KEY_B_1", "0.375"},
        {"KEY_T_1", "0.1875"},
        {"Rm", "100000"},
        {"Re", "84000"},
        {"reliability", "50"},
        {"ZF1_0", "-1500"},
        {"ZM0_1", "3240"},
        {"ZM0_2", "-3240"}},
       1.82,
       0,
       33300,
       1.54},
  };
  for (const auto& each : cases) {
    auto inputs = each.inputs;
    for (const auto& common : std::vector<std::pair<const char*, const char*>>{{"units", "1"},
                                                                               {"#spiCount", "2"},
                                                                               {"l_1", "5"},
                                                                               {"l_2", "5"},
                                                                               {"#spinForces", "3"},
                                                                               {"ZX_0", "5"},
                                                                               {"ZX_1", "0"},
                                                                               {"ZX_2", "10"}}) {
      inputs.push_back(common);
    }
    auto result = Calculated(inputs);
    EXPECT_NEAR(result["Kf_1"] / each.kf, 1, 0.03) << each.name;
    if (each.kfs > 0) {
      EXPECT_NEAR(result["Kfs_1"] / each.kfs, 1, 0.03) << each.name;
    }
    EXPECT_NEAR(result["Se_1"] / each.endurance, 1, 0.005) << each.name;
    EXPECT_NEAR(result["SD"] / each.safety, 1, 0.03) << each.name;
    EXPECT_NEAR(result["xSD"], 5, 1e-6) << each.name;
  }
}

// Notch factors as others give them. Shoulders: Shigley, examples 7-1 and 6-6 (38 over 32 mm,
// fillet 3 mm, 690 MPa: Kt 1.65, Kts 1.35, Kf 1.55), and table 7-1 for D/d 1.5 (sharp 2.7 and 2.2,
// rounded 1.7 and 1.5). A shallow semicircular groove: 3.07 in tension and bending, 2 in torsion
// (Peterson).
TEST(Shaft, NotchFactorsArePublishedOnes) {
  const struct {
    const char* name;
    NotchFactors factors;
    double bending, torsion;
  } cases[] = {
      {"7-1", ShoulderNotch(1.65, 1.1, 0.11), 1.68, 1.42},
      {"6-6", ShoulderNotch(38, 32, 3), 1.65, 1.35},
      {"sharp", ShoulderNotch(45, 30, 0.6), 2.7, 2.2},
      {"rounded", ShoulderNotch(45, 30, 3), 1.7, 1.5},
      {"groove", GrooveNotch(1000, 1, 1), 3.07, 2.0},
  };
  for (const auto& each : cases) {
    EXPECT_NEAR(each.factors.bending / each.bending, 1, 0.05) << each.name;
    EXPECT_NEAR(each.factors.torsion / each.torsion, 1, 0.05) << each.name;
  }
  EXPECT_NEAR(FatigueNotch({1.65, 1.35}, 3, 690).bending, 1.55, 0.005);
  // Shigley, table 6-5.
  for (const auto& [part, factor] :
       {std::pair{0.5, 1.0}, {0.9, 0.897}, {0.99, 0.814}, {0.999, 0.753}}) {
    EXPECT_NEAR(ReliabilityFactor(part), factor, 5e-4) << part;
  }
}

// What stands still under a steady load is used up by its mean stress alone; a torque that swells
// from nothing has half of itself as amplitude and half as mean.
TEST(Shaft, FatigueDependsOnWhatAlternates) {
  const std::vector<std::pair<const char*, const char*>> axle = {
      {"#spiCount", "2"}, {"d_2", "60"}, {"r_1", "4"},     {"#spinForces", "3"}, {"ZX_0", "50"},
      {"ZF1_0", "-4000"}, {"ZX_1", "0"}, {"ZM0_1", "300"}, {"ZX_2", "100"},      {"ZM0_2", "-300"}};
  const auto with = [&](std::vector<std::pair<const char*, const char*>> more) {
    more.insert(more.end(), axle.begin(), axle.end());
    return Calculated(more);
  };
  const double modulus = kPi * 64 / 32;  // of Nm, in MPa
  const auto use = [&](auto& r, double bending, double torque) {
    return std::hypot(r["Kf_1"] * bending / modulus,
                      std::sqrt(3.0) * r["Kfs_1"] * torque / (2 * modulus));
  };
  auto steady = with({{"rotates", "0"}});
  EXPECT_NEAR(1 / steady["SD"], use(steady, 100, 300) / 650, 1e-6);
  auto turning = with({});
  EXPECT_NEAR(1 / turning["SD"],
              use(turning, 100, 0) / turning["Se_1"] + use(turning, 0, 300) / 650, 1e-6);
  auto swelling = with({{"Talt", "0.5"}});
  EXPECT_NEAR(1 / swelling["SD"],
              use(swelling, 100, 150) / swelling["Se_1"] + use(swelling, 0, 150) / 650, 1e-6);
}

// All seventeen kinds are taken: the diameter of the section that each leaves of 40 mm, the place
// of its notch, and that the dimensions reach the part.
TEST(Shaft, EveryKindOfSectionIsCalculated) {
  const struct {
    const char* type;
    std::vector<std::pair<const char*, const char*>> dimensions;
    double left;  // mm, 0: no notch
  } cases[] = {
      {"1", {}, 0},
      {"2", {{"RR_LR_1", "30"}, {"RR_M_1", "1.85"}, {"RR_d1_1", "37.5"}}, 37.5},
      {"3", {{"KEY_LR_1", "5"}, {"KEY_L_1", "30"}, {"KEY_B_1", "12"}, {"KEY_T_1", "5"}}, 40},
      {"4", {{"LW_LR_1", "0"}, {"LW_L_1", "30"}, {"LW_TP_1", "2"}}, 40 - 2.45372},
      {"5", {{"CONE_d1_1", "35"}}, 0},
      {"6", {{"NA_b_1", "3"}, {"NA_h_1", "0.5"}, {"NA_R_1", "1"}}, 39},
      {"7", {{"NB_b_1", "3"}, {"NB_h_1", "0.5"}, {"NB_add_1", "1"}}, 39},
      {"8", {{"ND_LR_1", "8"}, {"ND_L_1", "6"}, {"ND_h_1", "3"}, {"ND_R_1", "3"}}, 34},
      {"9", {{"NF_b_1", "3"}, {"NF_h_1", "0.5"}}, 39},
      {"10", {{"NG_b_1", "3"}, {"NG_h_1", "0.5"}}, 39},
      {"11", {{"NDA_b_1", "3"}, {"NDA_h_1", "0.5"}, {"PNDA_add_1", "1"}}, 39},
      {"12", {{"NDB_b_1", "3"}, {"NDB_h_1", "0.5"}}, 39},
      {"13", {{"HOLE_LR_1", "25"}, {"HOLE_D_1", "8"}}, 40},
      {"14", {{"RNa_LR_1", "8"}, {"RNa_L_1", "6"}, {"RNa_H_1", "3"}}, 34},
      {"15", {{"RNb_LR_1", "8"}, {"RNb_L_1", "6"}, {"RNb_H_1", "3"}}, 34},
      {"16", {{"Pr_n_1", "8"}, {"Pr_R_1", "18"}, {"Pr_X_1", "7"}}, 36},
      {"17", {{"WO_X_1", "36"}, {"WO_L_1", "10"}}, 36},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.type);
    auto inputs = each.dimensions;
    inputs.insert(inputs.end(), {{"#spiType_1", each.type},
                                 {"#spiCount", "1"},
                                 {"#spinForces", "1"},
                                 {"ZX_0", "25"},
                                 {"ZF1_0", "-1000"}});
    auto result = Calculated(inputs);
    EXPECT_EQ(result.count("Kt_1"), each.left > 0 ? 1u : 0u);
    EXPECT_EQ(result.count("SD"), each.left > 0 ? 1u : 0u);
    for (const auto& [name, value] : each.dimensions) EXPECT_EQ(result.count(name), 1u) << name;
    if (each.left == 0) continue;
    EXPECT_NEAR(result["dN_1"], each.left, 1e-9);
    EXPECT_GE(result["Kf_1"], 1);
    EXPECT_LE(result["Kf_1"], result["Kt_1"]);
  }
}

// Gere and Timoshenko: twist of a cone, 32 T L (1/da^3 - 1/db^3) / (3 pi G (db - da)).
TEST(Shaft, AConeTwistsAndWeighsAsItsFormulasSay) {
  ShaftInput shaft = Uniform(30, 400);
  shaft.sections[0].endDiameter = 50;
  ShaftLoad load;
  load.torque = 200;
  shaft.loads = {load, load};
  shaft.loads[1].x = 400;
  shaft.loads[1].torque = -200;
  const ShaftResult r = CalculateShaft(shaft);
  const double twist = 32 * 200e3 * 400 / (3 * kPi * 80000 * 20) * (1 / 27e3 - 1 / 125e3);
  EXPECT_NEAR(r.twist, -twist * 180 / kPi, 1e-8);
  EXPECT_NEAR(r.mass, kPi / 12 * (900 + 1500 + 2500) * 400 * 7850e-9, 1e-9);
  EXPECT_NEAR(r.centreOfMass, 400 * (900 + 2 * 1500 + 3 * 2500) / (4 * 4900.0), 1e-9);
}

// A kind that came from an older layout without its dimensions counts as plain; what is left of
// another kind plays no part.
TEST(Shaft, StoredKindsWithoutDimensionsArePlain) {
  Inputs inputs;
  inputs.SetStored("#spiType_2", "3");
  inputs.SetStored("KEY_B_2", "");
  inputs.SetStored("RR_d1_2", "10");
  const auto part = Shafts().Run(inputs).front();
  for (const DataParameter& each : part.parameters) EXPECT_NE(each.name, "Kt_1");
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
