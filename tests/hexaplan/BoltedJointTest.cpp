// The bolted joint and the parallel key against examples that others published, metric and inch,
// and their refusals.
#include <gmock/gmock.h>

#include "hexaplan/calculation/BoltedJoint.h"
#include "hexaplan/calculation/BoltedJointCalculation.h"
#include "hexaplan/calculation/KeyCalculation.h"

namespace hexaplan {
namespace {

using Given = std::vector<std::pair<const char*, const char*>>;

std::vector<CalculatedPart> RunWith(const Calculation& calculation, const Given& given) {
  Inputs inputs;
  for (const auto& [name, text] : given) inputs.SetOrdered(name, text);
  return Calculate(calculation, inputs);
}

// A result, whose unit must be this one.
double Value(const CalculatedPart& part, const std::string& name, const std::string& unit) {
  for (const DataParameter& each : part.parameters) {
    if (each.name != name) continue;
    EXPECT_EQ(each.unit, unit) << name;
    return std::stod(each.value);
  }
  ADD_FAILURE() << "no " << name;
  return 0;
}

// Shigley's Mechanical Engineering Design, 9th edition, example 8-4: cast-iron pressure vessel,
// 5/8 in-11 UNC bolts of SAE grade 5, grip 1.5 in, 36 kip on six bolts.
TEST(BoltedJoint, HasTheFiguresOfAPublishedInchExample) {
  const auto parts = RunWith(BoltedJoints(), {{"units", "1"},
                                              {"d", "0.625"},
                                              {"grade", "5"},
                                              {"t_1", "0.75"},
                                              {"t_2", "0.75"},
                                              {"E_1", "14e6"},
                                              {"E_2", "14e6"},
                                              {"Eb", "30e6"},
                                              {"N", "6"},
                                              {"F", "36000"}});
  ASSERT_EQ(parts.size(), 1u);
  EXPECT_EQ(parts[0].size, "0.625-11x2.25");
  EXPECT_NEAR(Value(parts[0], "As", "in2"), 0.226, 5e-4);
  EXPECT_NEAR(Value(parts[0], "kb", "lbf/in"), 5.21e6, 1e4);
  EXPECT_NEAR(Value(parts[0], "km", "lbf/in"), 8.95e6, 1e4);
  EXPECT_NEAR(Value(parts[0], "C", "ND"), 0.368, 1e-3);
  EXPECT_NEAR(Value(parts[0], "F0", "lbf"), 14400, 50);
  EXPECT_NEAR(Value(parts[0], "nL", "ND"), 2.18, 0.01);
  EXPECT_NEAR(Value(parts[0], "np", "ND"), 1.16, 0.005);
  EXPECT_NEAR(Value(parts[0], "n0", "ND"), 3.80, 0.01);
  EXPECT_EQ(Value(parts[0], "d", "in"), 0.625);
}

// The same book, problem 8-11 as solved in its manual: M14 x 2 through two steel plates of 15 mm
// each, E = 207 GPa. Bolt 45 mm, 874.6 MN/m (with a stress area rounded to 115 mm2); plates
// 3116.5 MN/m.
TEST(BoltedJoint, HasTheStiffnessOfAPublishedMetricProblem) {
  const auto parts =
      RunWith(BoltedJoints(),
              {{"d", "14"}, {"E_1", "207000"}, {"E_2", "207000"}, {"Eb", "207000"}, {"F", "0"}});
  EXPECT_EQ(Value(parts[0], "Lb", "mm"), 45);
  EXPECT_NEAR(Value(parts[0], "As", "mm2"), 115, 0.5);
  EXPECT_NEAR(Value(parts[0], "kb", "N/mm") / 874600, 1, 3e-3);
  EXPECT_NEAR(Value(parts[0], "km", "N/mm") / 3116500, 1, 1e-4);
}

// The same book, example 8-3: 3/4 in-16 UNF, 6 kip on a preload of 25 kip, kb = 6.50 and km = 13.8
// Mlbf/in. Stresses 67.02 and 72.17 kpsi, C = 0.320, torque 3750 lbf in with K = 0.2. Units are
// pounds and inches throughout.
TEST(BoltedJoint, CarriesTheLoadOfAPublishedExample) {
  BoltedJointInput joint;
  joint.diameter = 0.75;
  joint.proofStrength = 85000;
  joint.totalLoad = 6000;
  joint.preload = 25000;
  joint.torqueFactor = 0.2;
  BoltedJointResult r;
  r.stressArea = 0.373;
  r.boltStiffness = 6.5e6;
  r.partStiffness = 13.8e6;
  LoadBoltedJoint(joint, r);
  EXPECT_NEAR(r.stiffnessConstant, 0.320, 5e-4);
  EXPECT_NEAR(r.preloadStress, 67020, 10);
  EXPECT_NEAR(r.serviceStress, 72170, 10);
  EXPECT_NEAR(r.torque * 1000, 3750, 1e-9);
}

TEST(BoltedJoint, NutAndWasherAreViewsThatWeighWithTheBolt) {
  const Given given = {{"tw", "2.5"}, {"t_1", "20"}};
  const CalculatedPart bolt = RunWith(BoltedJoints(), given)[0];
  ASSERT_EQ(bolt.views.size(), 2u);
  EXPECT_EQ(bolt.views[0].viewKey + "," + bolt.views[0].modelId, "nut,NUT");
  EXPECT_EQ(bolt.views[1].caption, "Washer 12");
  EXPECT_NEAR(Value(bolt.views[1], "mass", "kg"),
              3.14159265 / 4 * (24 * 24 - 12.96 * 12.96) * 2.5 * 7.85e-6, 1e-8);
  EXPECT_GT(Value(bolt, "mass", "kg"), Value(bolt.views[0], "mass", "kg") * 2);
  EXPECT_EQ(Value(bolt, "lk", "mm"), 37.5);
}

// The same book, example 7-6: shaft of 1 7/16 in, 40 hp at 600 rev/min (4202 lbf in), square key of
// 3/8 in, Sy = 65 kpsi, safety 2.8. Force 5850 lbf; shear needs 1.16 in, crushing 1.34 in.
TEST(ParallelKey, HasTheLengthsOfAPublishedInchExample) {
  const auto key = RunWith(ParallelKeys(), {{"units", "1"},
                                            {"d1", "1.4375"},
                                            {"T", "4202"},
                                            {"Re", "65000"},
                                            {"S", "2.8"},
                                            {"form", "2"}})[0];
  EXPECT_EQ(key.size, "0.375x0.375x1.375");
  EXPECT_NEAR(Value(key, "Fo", "lbf"), 5850, 5);
  EXPECT_NEAR(Value(key, "lTau", "in"), 1.16, 0.005);
  EXPECT_NEAR(Value(key, "lP", "in"), 1.34, 0.005);
}

// DIN 6885 part 1: shafts above 38 up to 44 mm have keys 12 x 8, 5 mm deep in the shaft. A key
// with round ends bears on its length less its width.
TEST(ParallelKey, TakesTheMetricSectionAndCutsOrStands) {
  const Given given = {{"d1", "40"}, {"T", "200"}, {"l", "50"}};
  const CalculatedPart cut = RunWith(ParallelKeys(), given)[0];
  EXPECT_EQ(cut.kind, PartKind::Cut);
  EXPECT_EQ(cut.size, "12x8x50");
  EXPECT_EQ(Value(cut, "tk", "mm"), 5);
  EXPECT_NEAR(Value(cut, "p", "MPa"), 10000 / (4.0 * 38), 1e-5);
  EXPECT_NEAR(Value(cut, "SP", "ND"), 300 * 4.0 * 38 / 10000, 1e-6);
  EXPECT_EQ(RunWith(ParallelKeys(), {{"standing", "1"}})[0].kind, PartKind::Feature);
}

TEST(BoltedJoint, RefusesWhatDoesNotFitOrHold) {
  const struct {
    const Calculation& calculation;
    Given inputs;
    const char* message;
  } cases[] = {
      {BoltedJoints(),
       {{"d", "13"}},
       "Field \"P\": a thread of 13 mm has no coarse pitch; give one."},
      {BoltedJoints(), {{"P", "5"}}, "Field \"P\": the pitch is too large for the diameter."},
      {BoltedJoints(), {{"grade", "7"}}, "Field \"grade\": 7 is no property class 4.6 to 12.9"},
      {BoltedJoints(), {{"L", "35"}}, "Field \"L\": the bolt is too short"},
      {BoltedJoints(), {{"L", "120"}}, "Field \"L\": the thread ends outside the parts"},
      {BoltedJoints(), {{"dw", "12"}}, "Field \"dw\": the face is not larger than the thread."},
      {BoltedJoints(), {{"Fi", "60000"}}, "Field \"Fi\": the preload stresses the bolt to "},
      {BoltedJoints(), {{"F", "200000"}}, "Field \"F\": the bolts yield"},
      {BoltedJoints(), {{"F", "40000"}, {"ni", "0.4"}}, "Field \"F\": the joint opens"},
      {BoltedJoints(), {{"tt", "1"}}, "Field \"tt\": the calculation \"Bolted joint\" has no such"},
      {ParallelKeys(), {{"d1", "6"}}, "Field \"b\": the standard has no key for a shaft of 6 mm"},
      {ParallelKeys(), {{"b", "30"}}, "Field \"b\": the key is wider than half the shaft."},
      {ParallelKeys(), {{"t1", "9"}}, "Field \"t1\": the keyway is deeper than the key"},
      {ParallelKeys(), {{"l", "20"}}, "Field \"l\": the key must be at least "},
      {ParallelKeys(), {{"T", "2000"}}, "Field \"T\": the key would be "},
  };
  for (const auto& each : cases) {
    try {
      RunWith(each.calculation, each.inputs);
      ADD_FAILURE() << "not refused: " << each.message;
    } catch (const InputError& error) {
      EXPECT_THAT(error.what(), testing::StartsWith(each.message));
    }
  }
}

// What was stored in one system is read in the other: the unit that a stored value bears counts.
TEST(Units, StoredValuesKeepTheirMeaningWhenTheUnitsChange) {
  Inputs inputs;
  inputs.SetStored("d", "0.5", "in");
  inputs.SetStored("t_1", "20", "mm");
  inputs.SetOrdered("units", "1");
  inputs.SetOrdered("t_2", "0.75");
  inputs.SetOrdered("grade", "5");
  const CalculatedPart bolt = Calculate(BoltedJoints(), inputs)[0];
  EXPECT_EQ(Value(bolt, "d", "in"), 0.5);
  EXPECT_NEAR(Value(bolt, "t_1", "in"), 20 / 25.4, 1e-7);
  EXPECT_EQ(Value(bolt, "t_2", "in"), 0.75);
  EXPECT_NEAR(Value(bolt, "lk", "in"), 20 / 25.4 + 0.75, 1e-7);
  EXPECT_EQ(Value(bolt, "E_1", "psi"), 3e7);
}

TEST(Units, EachCalculationHasDefaultsThatMakeSenseInInches) {
  const struct {
    const char* dataFile;
    const char* size;
  } cases[] = {
      {"GEAR1", "P10 z21 b1.25"}, {"SHAFT", "D1.5 L6"},        {"CAM", "R1.5 h0.75 b0.75"},
      {"THRJOIN", "0.5-13x1.75"}, {"KEYWAY", "0.375x0.375x1"}, {"SURFACE", "Ra 3.2"},
      {"xformats", "A3 1:1"},
  };
  for (const auto& each : cases) {
    Inputs inputs;
    inputs.SetOrdered("units", "1");
    EXPECT_EQ(Calculate(*FindCalculation(each.dataFile), inputs)[0].size, each.size);
  }
}

TEST(Units, AThreadWithoutACoarsePitchIsNamedWithItsUnit) {
  try {
    RunWith(BoltedJoints(), {{"units", "1"}, {"d", "0.45"}});
    ADD_FAILURE() << "not refused";
  } catch (const InputError& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr("a thread of 0.45 in has no coarse pitch"));
  }
}

}  // namespace
}  // namespace hexaplan
