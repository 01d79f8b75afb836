// Solids against hand formulas, against the formulas of the other kernel, and what they refuse.
#include "drawboard/native/occt/Solid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>
#include <BRepMesh_IncrementalMesh.hxx>
#include <StlAPI_Writer.hxx>
#include <array>
#include <cmath>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <regex>
#include <set>

#include "drawboard/BoardError.h"

using namespace drawboard;
using testing::HasSubstr;

namespace {

constexpr double kPi = std::numbers::pi;

// A part of a library model with parameters "name,value,name,value".
PartDescription Part(const std::string& model, const std::string& parameters,
                     NamedTexts featureStates = {}) {
  PartDescription part;
  part.model = model;
  part.parameters = ParseParameters("*view*,V," + parameters).parameters;
  part.featureStates = std::move(featureStates);
  return part;
}

std::string CamParameters(int points, const std::string& rest) {
  std::string text = "cPoint," + std::to_string(points) + rest;
  for (int i = 0; i < points; ++i) {
    const double angle = 2 * kPi * i / points;
    text += ",a_" + std::to_string(i + 1) + "," + std::to_string(360.0 * i / points) + ",l_" +
            std::to_string(i + 1) + "," + std::to_string(50 + 10 * std::cos(angle));
  }
  return text;
}

constexpr const char* kGear = "z,21,m,2.5,x,0.2,alfa,20,b,30,dh,30";
constexpr const char* kShaft = "#spiCount,3,d_1,20,l_1,45,d_2,30,l_2,60,d_3,25,l_3,17";

// One part of each kind.
std::vector<std::pair<const char*, PartDescription>> Kinds() {
  return {{"gear", Part("spurgear", kGear)},
          {"shaft", Part("shaft",
                         std::string(kShaft) + ",#spiType_2,3,KEY_LR_2,10,KEY_L_2,40," +
                             "KEY_B_2,8,KEY_T_2,4",
                         {{"EndChamfers", "1"}})},
          {"cam", Part("disccam", CamParameters(180, ",b,20,dh,25"))},
          {"bolt", Part("hexbolt", "d_1,18.9,l_1,7.8,d_2,12,l_2,60", {{"PointChamfer", "1"}})},
          {"nut", Part("hexnut", "d_1,18.9,l_1,10.8,dh,12")},
          {"washer", Part("washer", "d_1,24,l_1,2.5,dh,13", {{"Chamfer", "1"}})}};
}

double VolumeOf(const PartDescription& part) {
  return BuildSolid(ReadDesign(part)).properties.volume;
}

std::string RefusalOf(const PartDescription& part) {
  try {
    BuildSolid(ReadDesign(part));
    return "";
  } catch (const BoardError& error) {
    return error.what();
  }
}

}  // namespace

TEST(Solids, VolumesAreThoseOfHandFormulas) {
  const double hexagon = std::sqrt(3) / 2;  // area of a hexagon, in squares of its width
  const double flats = 18.9 * std::sqrt(kPi / (2 * std::sqrt(3)));
  const struct {
    const char* name;
    PartDescription part;
    double volume, tolerance;  // the latter as a part
  } cases[] = {
      {"steps", Part("shaft", kShaft), kPi * (100 * 45 + 225 * 60 + 156.25 * 17), 1e-9},
      {"cone", Part("shaft", "d_1,40,l_1,30,#spiType_1,5,CONE_d1_1,20"),
       kPi * 30 / 3 * (400 + 200 + 100), 1e-9},
      {"bored shaft", Part("shaft", "d_1,40,l_1,30,dh,10"), kPi * 30 * (400 - 25), 1e-9},
      {"ring groove", Part("shaft", "d_1,40,l_1,30,#spiType_1,2,RR_LR_1,5,RR_M_1,2,RR_d1_1,37"),
       kPi * (400 * 28 + 18.5 * 18.5 * 2), 1e-9},
      {"chamfered ends", Part("shaft", "d_1,40,l_1,30", {{"EndChamfers", "1"}}),
       kPi * (400 * 26 + 2 * 2 / 3.0 * (400 + 360 + 324)), 1e-9},
      {"washer", Part("washer", "d_1,24,l_1,2.5,dh,13"), kPi / 4 * (576 - 169) * 2.5, 1e-9},
      // The broken corners take a little away.
      {"bolt", Part("hexbolt", "d_1,18.9,l_1,7.8,d_2,12,l_2,60"),
       hexagon * flats * flats * 7.8 + kPi * 36 * 60, 0.01},
      {"nut", Part("hexnut", "d_1,18.9,l_1,10.8,dh,12"),
       hexagon * flats * flats * 10.8 - kPi * 36 * 10.8, 0.03},
      // r = 50 + 10 cos(angle): half the integral of its square.
      {"cam", Part("disccam", CamParameters(180, ",b,20,dh,25")),
       (kPi * (2500 + 50) - kPi * 156.25) * 20, 1e-6},
      {"inch washer",
       [] {
         PartDescription part = Part("washer", "d_1,2,l_1,1,dh,1");
         part.unit = Unit::Inch;
         return part;
       }(),
       kPi / 4 * 3 * std::pow(25.4, 3), 1e-9},
  };
  for (const auto& each : cases) {
    EXPECT_NEAR(VolumeOf(each.part), each.volume, each.volume * each.tolerance) << each.name;
  }
}

// The profile's area by the polar integral of r(angle)^2 / 2 over a fine polygon: flanks from the
// involute's equation, a root without fillet. The fillets add a little to that.
TEST(Solids, AGearLiesBetweenItsCirclesAndFillsItsProfile) {
  const struct {
    const char* parameters;
    double most;  // that the fillets may add, as a part of the volume
  } cases[] = {{"z,21,m,2.5,x,0.2,b,30", 0.02},
               {"z,21,m,2.5,x,0.2,b,30,rf*,0.05", 1e-3},
               {"z,63,m,2.5,x,-0.2,b,30,rf*,0.05", 1e-3},
               {"z,100,m,1,b,10", 0.01},
               {"z,12,m,4,x,0.5,b,10,rf*,0.05", 1e-3}};
  for (const auto& each : cases) {
    const GearDesign gear = std::get<GearDesign>(ReadDesign(Part("spurgear", each.parameters)));
    const auto involute = [](double angle) { return std::tan(angle) - angle; };
    constexpr int kSteps = 20000;
    double tooth = 0;  // half a tooth above the root circle, ∫ halfAngle(r) r dr
    for (int i = 0; i < kSteps; ++i) {
      const double step = (gear.tipRadius - gear.rootRadius) / kSteps;
      const double r = gear.rootRadius + (i + 0.5) * step;
      const double pressure = r > gear.baseRadius ? std::acos(gear.baseRadius / r) : 0;
      tooth += (gear.toothAngle + involute(gear.pressureAngle) - involute(pressure)) * r * step;
    }
    const double root = kPi * gear.rootRadius * gear.rootRadius;
    const double profile = (root + 2 * gear.teeth * tooth) * gear.width;
    const double volume = VolumeOf(Part("spurgear", each.parameters));
    EXPECT_GT(volume, profile) << each.parameters;
    EXPECT_LT(volume, profile * (1 + each.most)) << each.parameters;
    EXPECT_GT(volume, root * gear.width);
    EXPECT_LT(volume, kPi * gear.tipRadius * gear.tipRadius * gear.width);
  }
  const double plain = VolumeOf(Part("spurgear", kGear));
  PartDescription keyed = Part("spurgear", kGear);
  keyed.features.push_back(Part("keyway", "d1,30,bk,8,hk,7,tk,4,lk,30"));
  // 8 wide, 3.3 above the bore, less what the bore's arc has taken already.
  const double half = std::asin(4 / 15.0);
  const double arc = 15 * 15 * half - 4 * 15 * std::cos(half);
  EXPECT_NEAR(plain - VolumeOf(keyed), (8 * (15 + 3.3 - 15 * std::cos(half)) - arc) * 30, 1e-6);
}

// What the Windows target weighs by formulas, this target weighs by solids.
TEST(Solids, ShaftsWeighAsTheFormulasHaveThem) {
  const std::string shaft = std::string(kShaft) + ",#spiType_2,";
  const NamedTexts chamfers{{"EndChamfers", "1"}};
  std::vector<std::pair<std::string, PartDescription>> cases = {
      {"cylinders", Part("shaft", kShaft)},
      {"chamfers", Part("shaft", kShaft, chamfers)},
      {"bore", Part("shaft", std::string(kShaft) + ",dh,8", chamfers)},
      {"edges",
       Part("shaft", std::string(kShaft) +
                         ",#spi1Add_2,1,s1_2,2,#spi2Add_2,2,s2r_2,3,#spi1Add_1,2,s1r_1,2")},
      {"ring groove", Part("shaft", shaft + "2,RR_LR_2,5,RR_M_2,1.5,RR_d1_2,28")},
      {"keyways", Part("shaft", shaft + "3,KEY_LR_2,10,KEY_L_2,40,KEY_B_2,8,KEY_T_2,4,KEY_n_2,3")},
      {"thread", Part("shaft", shaft + "4,LW_L_2,60,LW_B_2,4,LW_T_2,2")},
      {"cone", Part("shaft", shaft + "5,CONE_d1_2,24")},
      {"undercut right", Part("shaft", shaft + "6,NA_b_2,3,NA_h_2,0.4")},
      {"undercut left", Part("shaft", shaft + "11,NDA_b_2,3,NDA_h_2,0.4,PNDA_add_2,1")},
      {"round groove", Part("shaft", shaft + "8,ND_LR_2,20,ND_L_2,6,ND_h_2,3")},
      {"hole", Part("shaft", shaft + "13,HOLE_LR_2,30,HOLE_D_2,10")},
      {"blind hole", Part("shaft", shaft + "13,HOLE_LR_2,30,HOLE_D_2,10,HOLE_L_2,12")},
      {"recess", Part("shaft", shaft + "15,RNb_LR_2,20,RNb_L_2,10,RNb_H_2,2")},
      {"splines", Part("shaft", shaft + "16,Pr_n_2,6,Pr_R_2,13,Pr_X_2,6")},
      {"flats", Part("shaft", shaft + "17,WO_X_2,24,WO_L_2,20")},
  };
  for (const char* model : {"keyway", "shaftkey"}) {
    for (const char* form : {"1", "2"}) {
      PartDescription part = Part("shaft", kShaft, chamfers);
      part.features.push_back(
          Part(model, std::string("d1,30,bk,8,hk,7,tk,4,lk,40,x,70,form,") + form));
      cases.emplace_back(std::string(model) + form, part);
    }
  }
  const auto formulas = MakeFormulaKernel();
  for (const auto& [name, part] : cases) {
    SCOPED_TRACE(name);
    ASSERT_EQ(RefusalOf(part), "");
    const MassProperties solid = BuildSolid(ReadDesign(part)).properties;
    const MassProperties formula = *formulas->Weigh(part);
    const double density = DensityOf(part);
    EXPECT_NEAR(formula.volume, solid.volume, 1e-4 * solid.volume);
    EXPECT_NEAR(formula.mass, solid.mass * density, 1e-4 * formula.mass);
    EXPECT_NEAR(formula.area, solid.area, 1e-3 * solid.area);
    for (const auto place :
         {&MassProperties::centerX, &MassProperties::centerY, &MassProperties::centerZ}) {
      EXPECT_NEAR(formula.*place, solid.*place, 1e-3);
    }
    for (const auto moment :
         {&MassProperties::momentXX, &MassProperties::momentYY, &MassProperties::momentZZ,
          &MassProperties::momentXY, &MassProperties::momentXZ, &MassProperties::momentYZ}) {
      EXPECT_NEAR(formula.*moment, solid.*moment * density, 1e-4 * formula.momentYY);
    }
  }
}

TEST(Solids, DimensionsThatMakeNoBodyAreRefusedInWords) {
  // An eight: only the modeller sees that the lines cross.
  PartDescription eight = Part("disccam", "b,10");
  eight.profile.emplace();
  for (int i = 0; i < 40; ++i) {
    const double angle = 2 * kPi * (i + 0.5) / 40;
    eight.profile->first.push_back(30 * std::sin(angle));
    eight.profile->second.push_back(20 * std::sin(2 * angle) + 3 * std::sin(angle));
  }
  const struct {
    PartDescription part;
    const char* message;
  } cases[] = {
      {Part("shaft", "d_1,0,l_1,5"), "The diameter of element 1 of the shaft is not above 0"},
      {Part("shaft", "d_1,20,l_1,5,d_2,20,l_2,-1"), "The length of element 2 of the shaft"},
      {Part("shaft", "d_1,20,l_1,5,dh,20"), "The bore is not smaller than element 1"},
      {Part("shaft", "d_1,20,l_1,50,#spiType_1,3,KEY_L_1,60,KEY_B_1,6,KEY_T_1,3"), "does not fit"},
      {Part("shaft", "d_1,20,l_1,50,#spiType_1,3,KEY_L_1,30,KEY_B_1,6,KEY_T_1,12"), "too deep"},
      {Part("shaft", "d_1,20,l_1,50,#spiType_1,6,NA_b_1,3,NA_h_1,10"), "leaves no material"},
      {Part("shaft", "d_1,20,l_1,1e300"), "larger than a kilometre"},
      {Part("spurgear", "z,21,m,1e200,b,10"), "larger than a kilometre"},
      {Part("spurgear", "z,21,m,0,b,10"), "The module of the gear is not above 0"},
      {Part("spurgear", "z,20.5,m,2,b,10"), "A gear cannot have 20.5 teeth"},
      {Part("spurgear", "z,12,m,2,x,1.5,b,10"),
       "The flanks of the teeth meet below the tip circle"},
      {Part("spurgear", "z,21,m,2,b,0"), "The width of the gear is not above 0"},
      {Part("spurgear", "z,21,m,2,b,10,dh,40"), "The bore of the gear cuts its teeth"},
      {Part("disccam", CamParameters(20, ",b,10,dh,90")), "The bore of the cam is larger"},
      {Part("disccam", "b,10,cPoint,2,l_1,1,a_1,0,l_2,1,a_2,90"), "fewer than three points"},
      {eight, "The part's surfaces cross each other"},
      {Part("hexbolt", "d_1,12,l_1,7,d_2,12,l_2,50"), "The head of the bolt is not above its"},
      {Part("hexnut", "d_1,18,l_1,0,dh,12"), "The nut needs a thread and a height above 0"},
      {Part("washer", "d_1,12,l_1,2,dh,13"), "The washer is not larger than its hole"},
  };
  for (const auto& each : cases) EXPECT_THAT(RefusalOf(each.part), HasSubstr(each.message));
  // Parts that were not calculated yet, and models that no builder knows, are no error.
  for (const char* model :
       {"spurgear", "shaft", "disccam", "hexbolt", "hexnut", "washer", "pipe"}) {
    EXPECT_EQ(ReadDesign(Part(model, "q,1")).index(), 0u) << model;
  }
}

namespace {

struct Mesh {
  int facets = 0, open = 0, parts = 0;
  double volume = 0;
};

// What admesh, which knows nothing of the modeller, says of a solid's triangles.
Mesh MeshOf(const TopoDS_Solid& solid) {
  const BRepMesh_IncrementalMesh meshed(solid, 0.05);
  const std::string file =
      (std::filesystem::temp_directory_path() / ("solid" + std::to_string(getpid()) + ".stl"))
          .string();
  StlAPI_Writer().Write(solid, file.c_str());
  Mesh mesh;
  const std::string command = "admesh " + file;
  if (FILE* output = popen(command.c_str(), "r")) {
    std::array<char, 256> line{};
    while (fgets(line.data(), line.size(), output) != nullptr) {
      std::sscanf(line.data(), "Number of facets : %d", &mesh.facets);
      std::sscanf(line.data(), "Total disconnected facets : %*d %d", &mesh.open);
      std::sscanf(line.data(), "Number of parts : %d Volume : %lf", &mesh.parts, &mesh.volume);
    }
    pclose(output);
  }
  std::filesystem::remove(file);
  return mesh;
}

// References "#n" of a Part 21 text that no line defines.
std::set<std::string> Dangling(const std::string& step) {
  std::set<std::string> used, defined;
  const std::regex reference("#[0-9]+");
  for (std::sregex_iterator at(step.begin(), step.end(), reference), end; at != end; ++at) {
    const auto next = step.find_first_not_of(
        ' ', static_cast<std::size_t>(at->position()) + static_cast<std::size_t>(at->length()));
    (next != std::string::npos && step[next] == '=' ? defined : used).insert(at->str());
  }
  EXPECT_GT(defined.size(), 20u);
  for (const std::string& each : defined) used.erase(each);
  return used;
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

}  // namespace

TEST(Solids, OtherProgramsFindThemClosed) {
  for (const auto& [name, part] : Kinds()) {
    const Solid solid = BuildSolid(ReadDesign(part));
    const Mesh mesh = MeshOf(solid.shape);
    EXPECT_GT(mesh.facets, 20) << name;
    EXPECT_EQ(mesh.open, 0) << name;
    EXPECT_EQ(mesh.parts, 1) << name;
    // Chords cut a little off.
    EXPECT_NEAR(mesh.volume, solid.properties.volume, 0.01 * mesh.volume) << name;
  }
}

TEST(Solids, FilesAreWholeAndTheSameEachTime) {
  for (const auto& [name, part] : Kinds()) {
    SCOPED_TRACE(name);
    const Design design = ReadDesign(part);
    const TopoDS_Solid first = BuildSolid(design).shape, second = BuildSolid(design).shape;
    const std::string step = StepOf(first, design, "Wa\xC5\x82 1");
    EXPECT_THAT(Dangling(step), testing::IsEmpty());
    EXPECT_EQ(Count(step, "MANIFOLD_SOLID_BREP("), 1u);
    EXPECT_THAT(step, HasSubstr("PRODUCT('Wa\\X2\\0142\\X0\\ 1'"));
    EXPECT_EQ(step, StepOf(second, design, "Wa\xC5\x82 1"));
    const std::string glb = GlbOf(first, design, "part");
    EXPECT_EQ(glb.substr(0, 4), "glTF");
    EXPECT_EQ(glb, GlbOf(second, design, "part"));
    const std::string svg = SvgOf(first, "a<b");
    EXPECT_THAT(svg, HasSubstr("<title>a&lt;b</title>"));
    EXPECT_GT(Count(svg, "<path "), 3u);
    EXPECT_EQ(svg, SvgOf(second, "a<b"));
  }
}

TEST(Solids, AnAssemblyHasItsInstancesAndColours) {
  const auto kinds = Kinds();
  std::vector<AssemblyBody> bodies;
  for (const auto& [name, part] : kinds) bodies.push_back({name, name, ReadDesign(part)});
  bodies.push_back({"washer", "washer (2)", bodies.back().design});
  bodies.push_back({"disc", "disc", bodies.back().design});
  std::string problem;
  const auto files = OcctSolids().ExportAssembly(bodies, "Unit", problem);
  ASSERT_TRUE(files) << problem;
  EXPECT_THAT(Dangling(files->step), testing::IsEmpty());
  EXPECT_EQ(Count(files->step, "MANIFOLD_SOLID_BREP("), 7u);
  EXPECT_EQ(Count(files->step, "NEXT_ASSEMBLY_USAGE_OCCURRENCE("), 8u);
  EXPECT_EQ(Count(files->step, "PRODUCT('"), 8u);
  EXPECT_EQ(Count(files->step, "PRODUCT('washer'"), 1u);
  EXPECT_EQ(Count(files->step, "PRODUCT('disc'"), 1u);
  EXPECT_GE(Count(files->step, "COLOUR_RGB("), 4u);
  EXPECT_THAT(files->step, HasSubstr("'washer (2)'"));
  EXPECT_THAT(files->glb, HasSubstr("washer (2)"));
  EXPECT_EQ(files->svg, "");
}
