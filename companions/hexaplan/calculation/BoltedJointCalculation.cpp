// The bolted joint as users meet it: fields, parts and parameters around BoltedJoint.h.
#include "hexaplan/calculation/BoltedJointCalculation.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "hexaplan/calculation/BoltedJoint.h"

namespace hexaplan {

namespace {

constexpr double kSteel = 206000;          // MPa
constexpr double kSteelDensity = 7850e-9;  // kg/mm3
constexpr double kPsi = 0.00689475729;     // MPa

constexpr Field kDiameter{"d", "mm", 12, 3, 100, "diameter of the thread", false, 0.5};
constexpr Field kPitch{"P", "mm", 0, 0, 10, "pitch of the thread, 0 for the coarse one"};
constexpr Field kGrade{"grade", "ND", 8.8, 1, 15, "property class 4.6 to 12.9, SAE grade 2, 5, 8",
                       false,   5};
constexpr Field kLength{"L", "mm", 0, 0, 1000, "length of the bolt, 0 for the shortest that fits"};
constexpr Field kPlates{"plates", "ND", 2, 1, 20, "clamped plates", true};
constexpr Field kThickness{"t", "mm", 15, 0.1, 500, "thickness of the plate", false, 0.625};
constexpr Field kElasticity{"E",   "MPa", kSteel, 1000, 500000, "elasticity of the plate",
                            false, 3e7};
constexpr Field kWasher{"tw", "mm", 0, 0, 50, "thickness of the washer under the nut, 0 for none"};
constexpr Field kFace{"dw", "mm", 0, 0, 300, "diameter of the face under head and nut, 0: 1.5 d"};
constexpr Field kBoltElasticity{"Eb",  "MPa", kSteel, 1000, 500000, "elasticity of the bolt",
                                false, 3e7};
constexpr Field kBolts{"N", "ND", 1, 1, 1000, "number of bolts", true};
constexpr Field kLoad{"F",   "N", 10000, 0, 1e8, "load that pulls the parts apart, of all bolts",
                      false, 2500};
constexpr Field kPreload{"Fi", "N", 0, 0, 1e7, "preload of one bolt, 0: by its utilisation"};
constexpr Field kUtilisation{"ni", "ND", 0.75, 0.1, 1, "preload as a part of the proof load"};
constexpr Field kTorqueFactor{"K", "ND", 0.2, 0.05, 0.5, "torque factor"};

// Proportions of hexagon heads, nuts and washers, in diameters of the thread.
constexpr double kAcrossFlats = 1.5;
constexpr double kHeadHeight = 0.65;
constexpr double kNutHeight = 0.9;
constexpr double kWasherDiameter = 2;
constexpr double kWasherBore = 1.08;
// A circle of the same area as a hexagon, in widths across flats: sqrt(2 sqrt(3) / pi).
constexpr double kHexagonCircle = 1.0500751;

struct Grade {
  double number;
  const char* name;
  double proofStrength;  // MPa
};

constexpr Grade kGrades[] = {
    {4.6, "class 4.6", 225},          {4.8, "class 4.8", 310},
    {5.8, "class 5.8", 380},          {8.8, "class 8.8", 600},
    {9.8, "class 9.8", 650},          {10.9, "class 10.9", 830},
    {12.9, "class 12.9", 970},        {2, "SAE grade 2", 55000 * kPsi},
    {5, "SAE grade 5", 85000 * kPsi}, {8, "SAE grade 8", 120000 * kPsi},
};

const Grade& ReadGrade(Inputs& inputs) {
  const double number = inputs.Read(kGrade);
  const auto found = std::find_if(std::begin(kGrades), std::end(kGrades),
                                  [&](const Grade& grade) { return grade.number == number; });
  if (found == std::end(kGrades)) {
    throw InputError(kGrade.name, NumberText(number) + " is no " + kGrade.meaning + ".");
  }
  return *found;
}

double ReadPitch(Inputs& inputs, double diameter, bool inchThread) {
  const double given = inputs.Read(kPitch);
  const double pitch = given > 0 ? given : CoarsePitchOf(diameter, inchThread);
  if (pitch == 0) {
    throw InputError(kPitch.name, "a thread of " + inputs.ShownWithUnit(diameter, "mm") +
                                      " has no coarse pitch; give one.");
  }
  if (pitch > diameter / 3) {
    throw InputError(kPitch.name, "the pitch is too large for the diameter.");
  }
  return pitch;
}

void ReadLayers(Inputs& inputs, BoltedJointInput& joint, double washer) {
  const int plates = inputs.ReadWhole(kPlates);
  for (int i = 1; i <= plates; ++i) {
    const double thickness = inputs.Read(kThickness, i);
    joint.layers.push_back({thickness, inputs.Read(kElasticity, i)});
  }
  if (washer > 0) joint.layers.push_back({washer, kSteel});
}

BoltedJointInput ReadInput(Inputs& inputs, const Grade*& grade, double& washer) {
  BoltedJointInput joint;
  joint.inchThread = inputs.Units() == UnitSystem::Inch;
  joint.lengthStep = joint.inchThread ? 25.4 / 4 : 5;
  joint.diameter = inputs.Read(kDiameter);
  joint.pitch = ReadPitch(inputs, joint.diameter, joint.inchThread);
  grade = &ReadGrade(inputs);
  joint.proofStrength = grade->proofStrength;
  joint.length = inputs.Read(kLength);
  joint.nutHeight = kNutHeight * joint.diameter;
  washer = inputs.Read(kWasher);
  ReadLayers(inputs, joint, washer);
  const double face = inputs.Read(kFace);
  joint.washerDiameter = face > 0 ? face : 1.5 * joint.diameter;
  if (joint.washerDiameter <= joint.diameter) {
    throw InputError(kFace.name, "the face is not larger than the thread.");
  }
  joint.boltElasticity = inputs.Read(kBoltElasticity);
  joint.bolts = inputs.ReadWhole(kBolts);
  joint.totalLoad = inputs.Read(kLoad);
  joint.preload = inputs.Read(kPreload);
  joint.utilisation = inputs.Read(kUtilisation);
  joint.torqueFactor = inputs.Read(kTorqueFactor);
  return joint;
}

using Parameters = std::vector<DataParameter>;

void Add(Parameters& list, const std::string& name, double value, const char* unit) {
  list.push_back({name, NumberText(value), unit});
}

Parameters JointParameters(const Inputs& inputs, const BoltedJointInput& joint,
                           const BoltedJointResult& r) {
  Parameters list = inputs.Parameters();
  Add(list, "As", r.stressArea, "mm2");
  Add(list, "Sp", joint.proofStrength, "MPa");
  Add(list, "lk", r.grip, "mm");
  Add(list, "Lb", r.length, "mm");
  Add(list, "kb", r.boltStiffness, "N/mm");
  Add(list, "km", r.partStiffness, "N/mm");
  Add(list, "C", r.stiffnessConstant, "ND");
  Add(list, "F0", r.preload, "N");
  Add(list, "T", r.torque, "Nm");
  Add(list, "Fb", r.boltForce, "N");
  Add(list, "Fm", r.clampForce, "N");
  Add(list, "sigma0", r.preloadStress, "MPa");
  Add(list, "sigmaB", r.serviceStress, "MPa");
  Add(list, "np", r.yielding, "ND");
  if (joint.totalLoad > 0) {
    Add(list, "nL", r.overload, "ND");
    Add(list, "n0", r.separation, "ND");
  }
  return list;
}

// A body of round sections along its axis, as the model builds it; a hexagon counts as the circle
// of its area.
struct Body {
  std::vector<std::pair<double, double>> sections;  // diameter and length, mm
  double bore = 0;                                  // mm
};

double MassOf(const Body& body) {
  double volume = 0;
  for (const auto& [diameter, length] : body.sections) {
    volume += 0.7853981634 * (diameter * diameter - body.bore * body.bore) * length;
  }
  return volume * kSteelDensity;
}

CalculatedPart MakePart(const char* model, const char* view, const char* description,
                        const std::string& size, const Body& body, Parameters parameters) {
  CalculatedPart part;
  part.modelId = model;
  part.viewKey = view;
  part.description = description;
  part.size = size;
  part.caption = part.description + " " + size;
  part.material = "Steel";
  part.parameters = std::move(parameters);
  for (std::size_t i = 0; i < body.sections.size(); ++i) {
    const std::string number = "_" + std::to_string(i + 1);
    Add(part.parameters, "d" + number, body.sections[i].first, "mm");
    Add(part.parameters, "l" + number, body.sections[i].second, "mm");
  }
  Add(part.parameters, "dh", body.bore, "mm");
  part.mass = MassOf(body);
  Add(part.parameters, "mass", part.mass, "kg");
  return part;
}

std::string ThreadText(const Inputs& inputs, const BoltedJointInput& joint) {
  const std::string diameter = inputs.Shown(joint.diameter, "mm");
  if (joint.inchThread) return diameter + "-" + NumberText(std::round(25.4 / joint.pitch));
  const bool coarse = joint.pitch == CoarsePitchOf(joint.diameter, false);
  return "M" + diameter + (coarse ? "" : "x" + NumberText(joint.pitch));
}

const ValueNote kResults[] = {
    {"As", "stress area of the thread", "ISO 898-1, ASME B1.1"},
    {"Sp", "proof strength", "ISO 898-1, SAE J429"},
    {"lk", "clamped length", "sum of the plates and the washer"},
    {"Lb", "length of the bolt", "as given, else the shortest that fits"},
    {"kb", "stiffness of the bolt", "Shigley, eq. 8-17: Ad At E / (Ad lt + At ld)"},
    {"km", "stiffness of the clamped parts", "Shigley, eq. 8-19: frusta of 30 degrees"},
    {"C", "part of the load that the bolt takes", "Shigley, 8-7: kb / (kb + km)"},
    {"F0", "preload of one bolt", "Shigley, eq. 8-31: ni Sp As"},
    {"T", "tightening torque", "Shigley, eq. 8-27: K F0 d"},
    {"Fb", "force of one bolt in service", "Shigley, eq. 8-24: F0 + C F / N"},
    {"Fm", "clamping force in service", "Shigley, eq. 8-25: F0 - (1 - C) F / N"},
    {"sigma0", "stress by the preload", "F0 / As"},
    {"sigmaB", "stress in service", "Fb / As"},
    {"np", "safety against yielding", "Shigley, eq. 8-28: Sp As / Fb"},
    {"nL", "safety against overload", "Shigley, eq. 8-29: (Sp As - F0) / (C F / N)"},
    {"n0", "safety against separation", "Shigley, eq. 8-30: F0 / ((1 - C) F / N)"},
    {"d_i", "diameter of the section",
     "proportions of hexagon parts; a hexagon as the circle of its area"},
    {"l_i", "length of the section", "proportions of hexagon parts"},
    {"dh", "bore", "proportions of hexagon parts"},
    {"mass", "mass", "volume of the sections at 7850 kg/m3"},
};

class BoltedJointCalculation final : public Calculation {
 public:
  const char* DataFile() const override { return "THRJOIN"; }
  const char* Name() const override { return "Bolted joint"; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    const Grade* grade = nullptr;
    double washer = 0;
    const BoltedJointInput joint = ReadInput(inputs, grade, washer);
    inputs.RefuseUnknown(Name());
    const BoltedJointResult result = CalculateBoltedJoint(joint);

    const Parameters all = JointParameters(inputs, joint, result);
    const std::string thread = ThreadText(inputs, joint);
    const double d = joint.diameter;
    const double hexagon = kHexagonCircle * kAcrossFlats * d;
    const std::string length = thread + "x" + inputs.Shown(result.length, "mm");
    const char* set = washer > 0 ? "Bolt with nut and washer" : "Bolt with nut";
    CalculatedPart bolt = MakePart("HexBolt", "BOLT", set, length,
                                   {{{hexagon, kHeadHeight * d}, {d, result.length}}, 0}, all);
    bolt.material = std::string("Steel ") + grade->name;
    bolt.subtype = "bolt";
    bolt.views.push_back(
        MakePart("NUT", "nut", "Hexagon nut", thread, {{{hexagon, joint.nutHeight}}, d}, all));
    if (washer > 0) {
      bolt.views.push_back(MakePart("WASHER", "washer", "Washer", inputs.Shown(d, "mm"),
                                    {{{kWasherDiameter * d, washer}}, kWasherBore * d}, all));
    }
    // A bill of materials counts the views with the bolt.
    for (const CalculatedPart& view : bolt.views) bolt.mass += view.mass;
    bolt.parameters.back().value = NumberText(bolt.mass);
    return {bolt};
  }

  std::vector<std::string> NumberedNames() const override { return {"t", "E", "d", "l"}; }

  std::vector<ValueNote> Notes() const override {
    std::vector<ValueNote> notes;
    for (const Field* field :
         {&kDiameter, &kPitch, &kGrade, &kLength, &kPlates, &kWasher, &kFace, &kBoltElasticity,
          &kBolts, &kLoad, &kPreload, &kUtilisation, &kTorqueFactor}) {
      notes.push_back({field->name, field->meaning});
    }
    for (const Field* field : {&kThickness, &kElasticity}) {
      notes.push_back({std::string(field->name) + "_i", field->meaning});
    }
    notes.insert(notes.end(), std::begin(kResults), std::end(kResults));
    return notes;
  }
};

}  // namespace

const Calculation& BoltedJoints() {
  static const BoltedJointCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
