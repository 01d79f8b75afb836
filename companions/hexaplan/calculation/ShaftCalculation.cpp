// The stepped shaft as users meet it: numbered sections, supports and loads in the current layout
// of shaft protocols, around SteppedShaft.h.
#include "hexaplan/calculation/ShaftCalculation.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "hexaplan/calculation/Materials.h"
#include "hexaplan/calculation/ShaftElements.h"

namespace hexaplan {

namespace {

constexpr Field kSections{"#spiCount", "ND", 3, 1, 50, "number of sections", true};
constexpr Field kFillet{
    "r", "mm",
    0,   0,
    500, "fillet radius at the shoulder behind the section, 0: a fiftieth of the smaller diameter"};
constexpr Field kMaterial{"mat", "ND", 3, 1, kLastMaterial, "material", true};
constexpr Field kSupports{"#spinSupports", "ND", 2, 2, 2, "number of bearings", true};
constexpr Field kSupportSection{"PShaftID", "ND", 1, 1, 50, "section of the bearing", true};
constexpr Field kSupportInSection{"PXrel", "mm",  0,
                                  0,       20000, "place of the bearing in its section"};
constexpr Field kSupportPlace{"PX", "mm", 0, 0, 1e6, "place of the bearing from the left end"};
constexpr Field kAxial{"axial", "ND", 0, 0, 1, "1: the bearing takes the axial force", true};
constexpr Field kLoads{"#spinForces", "ND", 0, 0, 50, "number of loads", true};
constexpr Field kLoadSection{"ZShaftID", "ND", 1, 1, 50, "section of the load", true};
constexpr Field kLoadInSection{"ZXrel", "mm", 0, 0, 20000, "place of the load in its section"};
constexpr Field kLoadPlace{"ZX", "mm", 0, 0, 1e6, "place of the load from the left end"};
constexpr Field kForceX{"ZF0", "N", 0, -1e7, 1e7, "axial force"};
constexpr Field kForceY{"ZF1", "N", 0, -1e7, 1e7, "force across the shaft, y"};
constexpr Field kForceZ{"ZF2", "N", 0, -1e7, 1e7, "force across the shaft, z"};
constexpr Field kTorque{"ZM0", "Nm", 0, -1e7, 1e7, "torque"};
constexpr Field kBendingY{"ZM1", "Nm", 0, -1e7, 1e7, "bending moment in the plane x-y"};
constexpr Field kBendingZ{"ZM2", "Nm", 0, -1e7, 1e7, "bending moment in the plane x-z"};
constexpr Field kLineLoadY{"ZQ0", "N/mm", 0, 0, 0, "distributed loads are not calculated"};
constexpr Field kLineLoadZ{"ZQ1", "N/mm", 0, 0, 0, "distributed loads are not calculated"};

constexpr Field kTensile{"Rm", "MPa", 0, 0, 2500, "ultimate strength, 0: the material's"};
constexpr Field kYield{"Re", "MPa", 0, 0, 2500, "yield strength, 0: the material's"};
constexpr Field kSurface{
    "surface", "ND", 2, 1, kLastSurface, "1 ground, 2 machined, 3 hot-rolled, 4 forged", true};
constexpr Field kReliability{"reliability", "ND", 99, 50, 99.9999, "reliability in percent"};
constexpr Field kRotates{
    "rotates", "ND", 1, 0, 1, "1: the shaft turns in its loads, 0: they turn with it", true};
constexpr Field kAlternating{
    "Talt", "ND", 0, 0, 1, "part of the torque that alternates, 0: steady, 0.5: swelling"};

// Lengths and places are stored with 8 digits, in inches too: a place at the end of the shaft may
// come back beyond it by less than this part of its length.
constexpr double kRounding = 1e-6;

double WithinRounding(double x, const std::vector<ShaftSection>& sections) {
  double length = 0.0;
  for (const ShaftSection& section : sections) length += section.length;
  return std::abs(x - length) < kRounding * length ? length : x;
}

// A place is given from the left end or, as older protocols have it, within a section; the one
// that was ordered counts first.
double ReadPlace(Inputs& inputs, const Field& place, const Field& section, const Field& within,
                 int number, const std::vector<ShaftSection>& sections) {
  const bool ordered = inputs.IsOrdered(Numbered(place.name, number));
  const bool relativeOrdered = inputs.IsOrdered(Numbered(section.name, number)) ||
                               inputs.IsOrdered(Numbered(within.name, number));
  const bool relative =
      !ordered && (relativeOrdered || !inputs.IsGiven(Numbered(place.name, number)));
  if (!relative) return WithinRounding(inputs.Read(place, number), sections);

  const int index = static_cast<int>(inputs.Read(section, number));
  if (index > static_cast<int>(sections.size())) {
    throw InputError(Numbered(section.name, number),
                     "the shaft has only " + std::to_string(sections.size()) + " sections.");
  }
  double x = inputs.Read(within, number);
  for (int i = 0; i + 1 < index; ++i) x += sections[static_cast<std::size_t>(i)].length;
  return WithinRounding(x, sections);
}

// The material, or the strengths of one that is not in the list.
Material ReadMaterial(Inputs& inputs) {
  Material material = MaterialOf(inputs.ReadWhole(kMaterial));
  if (const double given = inputs.Read(kTensile); given > 0) material.tensileStrength = given;
  if (const double given = inputs.Read(kYield); given > 0) material.yieldStrength = given;
  if (material.tensileStrength < material.yieldStrength) {
    throw InputError(kTensile.name, "the ultimate strength of " +
                                        inputs.ShownWithUnit(material.tensileStrength, "MPa") +
                                        " is below the yield strength of " +
                                        inputs.ShownWithUnit(material.yieldStrength, "MPa") + ".");
  }
  return material;
}

// The shoulder between two sections; an undercut that ends there makes its corner.
void AddShoulder(Inputs& inputs, int number, double x, const ShaftElement& left,
                 const ShaftElement& right, ShaftInput& shaft) {
  const double before = left.section.EndDiameter();
  const double after = right.section.diameter;
  const std::string name = Numbered(kFillet.name, number);
  if (before == after) {
    if (inputs.IsOrdered(name)) {
      throw InputError(name, "there is no shoulder behind section " + std::to_string(number) +
                                 ": both diameters are " + inputs.ShownWithUnit(before, "mm") +
                                 ".");
    }
    return;
  }
  double radius = inputs.Read(kFillet, number);
  const bool rises = before < after;
  const ShaftElement& thin = rises ? left : right;
  if (radius > thin.section.length) {
    throw InputError(name, "the fillet is longer than the section beside it, which is " +
                               inputs.ShownWithUnit(thin.section.length, "mm") + " long.");
  }
  const Relief& relief = rises ? left.right : right.left;
  double small = std::min(before, after);
  if (relief.diameter > 0) {
    small = relief.diameter;
    radius = relief.radius;
  }
  if (radius == 0) radius = kSharpRadius * small;
  shaft.notches.push_back(
      {x, x, small, ShoulderNotch(std::max(before, after), small, radius), radius});
}

void ReadSections(Inputs& inputs, ShaftInput& shaft) {
  const int count = inputs.ReadWhole(kSections);
  std::vector<ShaftElement> elements;
  for (int i = 1; i <= count; ++i) {
    elements.push_back(ReadShaftElement(inputs, i, shaft.fatigue.tensileStrength));
  }
  double begin = 0.0;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    ShaftElement& element = elements[i];
    shaft.sections.push_back(element.section);
    for (Notch notch : element.notches) {
      notch.begin += begin;
      notch.end += begin;
      shaft.notches.push_back(notch);
    }
    begin += element.section.length;
    if (i + 1 < elements.size()) {
      AddShoulder(inputs, static_cast<int>(i) + 1, begin, element, elements[i + 1], shaft);
    }
  }
}

void ReadFatigue(Inputs& inputs, const Material& material, ShaftFatigue& fatigue) {
  fatigue.tensileStrength = material.tensileStrength;
  fatigue.surface = static_cast<Surface>(inputs.ReadWhole(kSurface));
  fatigue.reliability = inputs.Read(kReliability) / 100.0;
  fatigue.rotates = inputs.ReadWhole(kRotates) == 1;
  fatigue.alternatingTorque = inputs.Read(kAlternating);
}

void ReadSupports(Inputs& inputs, ShaftInput& shaft) {
  double length = 0.0;
  for (const ShaftSection& section : shaft.sections) length += section.length;
  inputs.ReadWhole(kSupports);
  const bool placed =
      inputs.IsGiven("PX_1") || inputs.IsGiven("PShaftID_1") || inputs.IsGiven("PXrel_1");
  bool axial[2];
  for (int j = 0; j < 2; ++j) {
    // Bearings that nobody placed stand in the ends.
    shaft.support[j] = placed || j == 0 ? ReadPlace(inputs, kSupportPlace, kSupportSection,
                                                    kSupportInSection, j, shaft.sections)
                                        : length;
    axial[j] = inputs.Read(kAxial, j) == 1.0;
  }
  if (axial[0] && axial[1]) {
    throw InputError("axial_1", "only one bearing can take the axial force.");
  }
  shaft.axialSupport = axial[1] ? 1 : 0;
}

void ReadLoads(Inputs& inputs, ShaftInput& shaft) {
  const int count = inputs.ReadWhole(kLoads);
  for (int k = 0; k < count; ++k) {
    ShaftLoad load;
    load.x = ReadPlace(inputs, kLoadPlace, kLoadSection, kLoadInSection, k, shaft.sections);
    load.forceX = inputs.Read(kForceX, k);
    load.forceY = inputs.Read(kForceY, k);
    load.forceZ = inputs.Read(kForceZ, k);
    load.torque = inputs.Read(kTorque, k);
    load.bendingY = inputs.Read(kBendingY, k);
    load.bendingZ = inputs.Read(kBendingZ, k);
    inputs.Read(kLineLoadY, k);
    inputs.Read(kLineLoadZ, k);
    shaft.loads.push_back(load);
  }
}

class ParameterList {
 public:
  explicit ParameterList(std::vector<DataParameter> read) : list(std::move(read)) {}
  void Set(const std::string& name, double value, const char* unit) {
    const auto known = std::find_if(list.begin(), list.end(),
                                    [&](const DataParameter& each) { return each.name == name; });
    if (known != list.end()) {
      *known = {name, NumberText(value), unit};
    } else {
      list.push_back({name, NumberText(value), unit});
    }
  }
  std::vector<DataParameter> Take() { return std::move(list); }

 private:
  std::vector<DataParameter> list;
};

double LargestDiameter(const ShaftInput& shaft) {
  double largest = 0.0;
  for (const ShaftSection& section : shaft.sections) {
    largest = std::max({largest, section.diameter, section.EndDiameter()});
  }
  return largest;
}

// Notches from left to right, numbered from 1.
void AddNotches(ParameterList& list, const ShaftInput& shaft, const ShaftResult& r) {
  list.Set("ka", r.surfaceFactor, "ND");
  list.Set("ke", r.reliabilityFactor, "ND");
  const NotchResult* worst = nullptr;
  for (std::size_t i = 0; i < r.notches.size(); ++i) {
    const NotchResult& notch = r.notches[i];
    const int number = static_cast<int>(i) + 1;
    list.Set(Numbered("xN", number), notch.x, "mm");
    list.Set(Numbered("dN", number), shaft.notches[i].diameter, "mm");
    list.Set(Numbered("Kt", number), notch.theoretical.bending, "ND");
    list.Set(Numbered("Kts", number), notch.theoretical.torsion, "ND");
    list.Set(Numbered("Kf", number), notch.fatigue.bending, "ND");
    list.Set(Numbered("Kfs", number), notch.fatigue.torsion, "ND");
    list.Set(Numbered("Se", number), notch.endurance, "MPa");
    if (notch.use <= 0.0) continue;
    list.Set(Numbered("SD", number), 1.0 / notch.use, "ND");
    if (worst == nullptr || notch.use > worst->use) worst = &notch;
  }
  if (worst == nullptr) return;
  list.Set("SD", 1.0 / worst->use, "ND");
  list.Set("xSD", worst->x, "mm");
}

std::vector<DataParameter> AllParameters(const Inputs& inputs, const ShaftInput& shaft,
                                         const Material& material, const ShaftResult& r) {
  ParameterList list(inputs.Parameters());
  list.Set("E", material.elasticity, "MPa");
  list.Set("G", material.shearModulus, "MPa");
  list.Set("ro", material.density, "kg/m3");
  list.Set("Sut", material.tensileStrength, "MPa");
  list.Set("Syt", material.yieldStrength, "MPa");
  for (int j = 0; j < 2; ++j) {
    list.Set(Numbered("PX", j), shaft.support[j], "mm");
    list.Set(Numbered("PF0", j), shaft.axialSupport == j ? r.reactionX : 0.0, "N");
    list.Set(Numbered("PF1", j), r.reactionY[j], "N");
    list.Set(Numbered("PF2", j), r.reactionZ[j], "N");
    list.Set(Numbered("PSlope", j), r.supportSlope[j] * 180.0 / 3.141592653589793, "deg");
  }
  for (std::size_t k = 0; k < shaft.loads.size(); ++k) {
    list.Set(Numbered("ZX", static_cast<int>(k)), shaft.loads[k].x, "mm");
  }
  list.Set("Length", r.length, "mm");
  list.Set("dMax", LargestDiameter(shaft), "mm");
  list.Set("MbMax", r.maxMoment, "Nm");
  list.Set("xMbMax", r.maxMomentAt, "mm");
  list.Set("TMax", r.maxTorque, "Nm");
  list.Set("sigmaB", r.maxBending, "MPa");
  list.Set("tau", r.maxTorsion, "MPa");
  list.Set("sigmaRed", r.maxEquivalent, "MPa");
  list.Set("xSigmaRed", r.maxEquivalentAt, "mm");
  if (r.maxEquivalent > 0.0) list.Set("SY", material.yieldStrength / r.maxEquivalent, "ND");
  list.Set("yMax", r.maxDeflection, "mm");
  list.Set("xyMax", r.maxDeflectionAt, "mm");
  list.Set("fi", r.twist, "deg");
  AddNotches(list, shaft, r);
  list.Set("xCentre", r.centreOfMass, "mm");
  list.Set("mass", r.mass, "kg");
  return list.Take();
}

const ValueNote kResults[] = {
    {"Sut", "ultimate strength", "as given, else of the material"},
    {"Syt", "yield strength", "as given, else of the material"},
    {"E", "elasticity", "of the material"},
    {"G", "shear modulus", "of the material"},
    {"ro", "density", "of the material"},
    {"PF0_i", "axial reaction of the bearing", "beam on two supports: sum of the forces"},
    {"PF1_i", "reaction of the bearing in y", "beam on two supports: sum of the moments"},
    {"PF2_i", "reaction of the bearing in z", "beam on two supports: sum of the moments"},
    {"PSlope_i", "slope in the bearing", "Euler-Bernoulli: curvature M / (E I), integrated once"},
    {"Length", "length of the shaft", "sum of the sections"},
    {"dMax", "largest diameter", "of the sections"},
    {"MbMax", "largest bending moment", "beam on two supports: sum of the moments"},
    {"xMbMax", "where it is", "place of the maximum"},
    {"TMax", "largest torque", "sum of the torques"},
    {"sigmaB", "largest bending stress", "Shigley, ch. 3: 32 M / (pi d^3)"},
    {"tau", "largest torsion stress", "Saint-Venant: 16 T / (pi d^3)"},
    {"sigmaRed", "largest equivalent stress", "von Mises: (sigma^2 + 3 tau^2)^0.5"},
    {"xSigmaRed", "where it is", "place of the maximum"},
    {"SY", "safety against yielding", "Syt / sigmaRed"},
    {"ka", "surface factor of fatigue", "Marin, Shigley 6-19: a Sut^b"},
    {"ke", "reliability factor of fatigue", "Marin, Shigley 6-29: 1 - 0.08 za"},
    {"xN_i", "place of the notch where it is worst", "place of the least safety"},
    {"dN_i", "diameter in the notch", "section that the notch leaves"},
    {"Kt_i", "notch factor in bending",
     "Peterson: shoulders A (r/d)^b (Norton), grooves (Roark 17.1); Shigley, table 7-1; DIN 743"},
    {"Kts_i", "notch factor in torsion",
     "Peterson: shoulders A (r/d)^b (Norton), grooves (Roark 17.1); Shigley, table 7-1; DIN 743"},
    {"Kf_i", "notch factor of fatigue in bending",
     "Neuber, Kuhn-Hardrath: 1 + (Kt - 1) / (1 + (a/r)^0.5)"},
    {"Kfs_i", "notch factor of fatigue in torsion",
     "Neuber, Kuhn-Hardrath: 1 + (Kts - 1) / (1 + (a/r)^0.5)"},
    {"Se_i", "endurance limit in the notch", "Marin, Shigley 6-18: ka kb ke Sut / 2"},
    {"SD_i", "safety against fatigue in the notch", "DE-Goodman, Shigley 7-7"},
    {"SD", "least safety against fatigue", "DE-Goodman, Shigley 7-7"},
    {"xSD", "where it is", "place of the minimum"},
    {"yMax", "largest deflection", "Euler-Bernoulli: curvature M / (E I), integrated twice"},
    {"xyMax", "where it is", "place of the maximum"},
    {"fi", "twist from end to end", "Saint-Venant: T l / (G Ip)"},
    {"xCentre", "centre of mass from the left end", "sum of the sections"},
    {"mass", "mass", "sum of the sections without what is cut into them"},
};

class ShaftCalculation final : public Calculation {
 public:
  const char* DataFile() const override { return "SHAFT"; }
  const char* Name() const override { return "Stepped shaft"; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    ShaftInput shaft;
    const Material material = ReadMaterial(inputs);
    ReadFatigue(inputs, material, shaft.fatigue);
    ReadSections(inputs, shaft);
    ReadSupports(inputs, shaft);
    ReadLoads(inputs, shaft);
    inputs.RefuseUnknown(Name());
    shaft.elasticity = material.elasticity;
    shaft.shearModulus = material.shearModulus;
    shaft.density = material.density;
    const ShaftResult result = CalculateShaft(shaft);

    CalculatedPart part;
    part.kind = PartKind::Shaft;
    part.modelId = "Shaft";
    part.viewKey = "MODELA";
    part.parameters = AllParameters(inputs, shaft, material, result);
    part.description = "Shaft";
    part.size =
        "D" + inputs.Shown(LargestDiameter(shaft), "mm") + " L" + inputs.Shown(result.length, "mm");
    part.caption = part.description + " " + part.size;
    part.material = material.name;
    part.mass = result.mass;
    return {part};
  }

  std::vector<std::string> NumberedNames() const override {
    std::vector<std::string> names = ElementFieldNames();
    for (const Field* field :
         {&kFillet, &kLoadPlace, &kLoadSection, &kLoadInSection, &kForceX, &kForceY, &kForceZ,
          &kTorque, &kBendingY, &kBendingZ, &kLineLoadY, &kLineLoadZ}) {
      names.emplace_back(field->name);
    }
    for (const char* result : {"xN", "dN", "Kt", "Kts", "Kf", "Kfs", "Se", "SD"}) {
      names.emplace_back(result);
    }
    return names;
  }

  std::vector<ValueNote> Notes() const override {
    std::vector<ValueNote> notes = ElementNotes();
    for (const Field* field : {&kSections, &kSupports, &kLoads, &kMaterial, &kTensile, &kYield,
                               &kSurface, &kReliability, &kRotates, &kAlternating}) {
      notes.push_back({field->name, field->meaning});
    }
    for (const Field* field :
         {&kFillet, &kSupportPlace, &kAxial, &kLoadPlace, &kForceX, &kForceY, &kForceZ, &kTorque,
          &kBendingY, &kBendingZ, &kLineLoadY, &kLineLoadZ}) {
      notes.push_back({std::string(field->name) + "_i", field->meaning});
    }
    notes.insert(notes.end(), std::begin(kResults), std::end(kResults));
    return notes;
  }
};

}  // namespace

const Calculation& Shafts() {
  static const ShaftCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
