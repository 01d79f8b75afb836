// The spur gear pair as users meet it: fields, parts and parameters around SpurGearPair.h.
#include "hexaplan/calculation/SpurGearCalculation.h"

#include <cmath>
#include <iterator>

#include "hexaplan/calculation/ParallelKey.h"
#include "hexaplan/calculation/SpurGearPair.h"

namespace hexaplan {

namespace {

constexpr Field kPower{"P", "kW", 5.5, 0.001, 50000, "transmitted power", false, 7.5};
constexpr Field kSpeed{"n1", "1/min", 1450, 0.1, 60000, "speed of the pinion"};
constexpr Field kRatio{"i", "ND", 0, 0, 12, "ratio from which the wheel's teeth are found"};
constexpr Field kModule{"m", "mm", 2.5, 0.2, 50, "module", false, 0.1};
constexpr Field kAngle{"alfa", "deg", 20, 14.5, 25, "pressure angle"};
constexpr Field kWidth{"b", "mm", 30, 1, 2000, "face width", false, 1.25};
constexpr Field kAddendum{"ha*", "ND", 1, 0.8, 1.25, "addendum of the basic rack"};
constexpr Field kClearance{"c*", "ND", 0.25, 0.1, 0.4, "clearance of the basic rack"};
constexpr Field kFillet{"rf*", "ND", 0.38, 0.1, 0.4, "root fillet radius of the basic rack"};
constexpr Field kApplication{"KA", "ND", 1.25, 1, 3, "application factor"};
constexpr Field kFaceLoad{"KHb", "ND", 1.2, 1, 3, "face load factor"};
constexpr Field kGrade{"stupenPresnosti", "ND", 7, 3, 12, "accuracy grade", true};
constexpr Field kParts{"parts", "ND", 1, 1, 3, "gears that become parts: 1 pinion, 2 wheel, 3 both",
                       true};
constexpr Field kTeeth[2] = {{"z1", "ND", 21, 6, 400, "teeth of the pinion", true},
                             {"z2", "ND", 63, 6, 2000, "teeth of the wheel", true}};
constexpr Field kShift[2] = {{"x1", "ND", 0.2, -1, 1, "profile shift of the pinion"},
                             {"x2", "ND", -0.2, -1, 1, "profile shift of the wheel"}};
constexpr Field kBore[2] = {{"dh1", "mm", 20, 0, 5000, "bore of the pinion", false, 0.75},
                            {"dh2", "mm", 35, 0, 5000, "bore of the wheel", false, 1.5}};
constexpr Field kKey[2] = {
    {"key1", "ND", 0, 0, 1, "1: a keyway of the standard in the bore of the pinion", true},
    {"key2", "ND", 0, 0, 1, "1: a keyway of the standard in the bore of the wheel", true}};
constexpr Field kMaterial[2] = {{"mat1", "ND", 5, 1, kLastMaterial, "material of the pinion", true},
                                {"mat2", "ND", 5, 1, kLastMaterial, "material of the wheel", true}};

constexpr const char* kGearNames[2] = {"pinion", "wheel"};

// The wheel's teeth: as ordered, else from an ordered ratio, else as stored.
int ReadWheelTeeth(Inputs& inputs, int pinionTeeth) {
  if (inputs.IsOrdered(kTeeth[1].name) || !inputs.IsOrdered(kRatio.name)) {
    return inputs.ReadWhole(kTeeth[1]);
  }
  const double ratio = inputs.Read(kRatio);
  if (ratio < 1.0) throw InputError(kRatio.name, "a ratio below 1 is not calculated.");
  const double teeth = std::round(pinionTeeth * ratio);
  inputs.Replace(kTeeth[1], teeth);
  return static_cast<int>(teeth);
}

void ReadHubKeyway(Inputs& inputs, const Field& field, GearInput& gear) {
  if (inputs.ReadWhole(field) == 0) return;
  if (gear.bore == 0) throw InputError(field.name, "a keyway needs a bore.");
  const KeySection key = StandardKeyOf(gear.bore, inputs.Units() == UnitSystem::Inch);
  if (key.width == 0) {
    throw InputError(field.name, "the standard has no key for a bore of " +
                                     inputs.ShownWithUnit(gear.bore, "mm") + ".");
  }
  gear.seatWidth = key.width;
  gear.seatDepth = key.hubDepth;
}

GearPairInput ReadInput(Inputs& inputs) {
  GearPairInput input;
  input.power = inputs.Read(kPower);
  input.speed = inputs.Read(kSpeed);
  input.module = inputs.Read(kModule);
  input.gear[0].teeth = inputs.ReadWhole(kTeeth[0]);
  input.gear[1].teeth = ReadWheelTeeth(inputs, input.gear[0].teeth);
  if (input.gear[1].teeth < input.gear[0].teeth) {
    throw InputError(kTeeth[1].name, "the wheel has fewer teeth than the pinion.");
  }
  input.pressureAngle = inputs.Read(kAngle);
  input.faceWidth = inputs.Read(kWidth);
  input.addendum = inputs.Read(kAddendum);
  input.clearance = inputs.Read(kClearance);
  input.filletRadius = inputs.Read(kFillet);
  input.applicationFactor = inputs.Read(kApplication);
  input.faceLoadFactor = inputs.Read(kFaceLoad);
  input.accuracyGrade = inputs.ReadWhole(kGrade);
  for (int g = 0; g < 2; ++g) {
    input.gear[g].profileShift = inputs.Read(kShift[g]);
    input.gear[g].bore = inputs.Read(kBore[g]);
    ReadHubKeyway(inputs, kKey[g], input.gear[g]);
    input.gear[g].material = &MaterialOf(inputs.ReadWhole(kMaterial[g]));
  }
  return input;
}

// The module, in inches the diametral pitch, by which such gears are called.
std::string PitchText(const Inputs& inputs, double module) {
  return inputs.Units() == UnitSystem::Inch ? "P" + NumberText(25.4 / module)
                                            : "m" + inputs.Shown(module, "mm");
}

void AddResult(std::vector<DataParameter>& list, const std::string& name, double value,
               const char* unit) {
  list.push_back({name, NumberText(value), unit});
}

std::vector<DataParameter> PairResults(const GearPairResult& r) {
  std::vector<DataParameter> list;
  AddResult(list, "i", r.ratio, "ND");
  AddResult(list, "a", r.referenceCentreDistance, "mm");
  AddResult(list, "aw", r.centreDistance, "mm");
  AddResult(list, "alfaw", r.workingPressureAngle, "deg");
  AddResult(list, "epsilon", r.contactRatio, "ND");
  AddResult(list, "n2", r.gear[1].speed, "1/min");
  AddResult(list, "v", r.velocity, "m/s");
  AddResult(list, "Ft", r.tangentialForce, "N");
  AddResult(list, "Fr", r.radialForce, "N");
  AddResult(list, "Fn", r.normalForce, "N");
  AddResult(list, "KV", r.dynamicFactor, "ND");
  AddResult(list, "KFb", r.rootFaceLoadFactor, "ND");
  AddResult(list, "Yeps", r.rootContactFactor, "ND");
  AddResult(list, "ZH", r.zoneFactor, "ND");
  AddResult(list, "ZE", r.elasticityFactor, "MPa^0.5");
  AddResult(list, "Zeps", r.flankContactFactor, "ND");
  AddResult(list, "pC", r.pitchPressure, "MPa");
  for (int g = 0; g < 2; ++g) {
    const std::string number = std::to_string(g + 1);
    AddResult(list, "T" + number, r.gear[g].torque, "Nm");
    AddResult(list, "YF" + number, r.gear[g].formFactor, "ND");
    AddResult(list, "YS" + number, r.gear[g].stressCorrection, "ND");
    AddResult(list, "sigmaF" + number, r.gear[g].rootStress, "MPa");
    AddResult(list, "SF" + number, r.gear[g].rootSafety, "ND");
    AddResult(list, "ZB" + number, r.gear[g].innerContact, "ND");
    AddResult(list, "sigmaH" + number, r.gear[g].flankStress, "MPa");
    AddResult(list, "SH" + number, r.gear[g].flankSafety, "ND");
  }
  return list;
}

// What drives the model of one gear.
std::vector<DataParameter> GearParameters(const GearInput& in, const GearResult& out) {
  std::vector<DataParameter> list;
  AddResult(list, "z", in.teeth, "ND");
  AddResult(list, "x", in.profileShift, "ND");
  AddResult(list, "dh", in.bore, "mm");
  AddResult(list, "bk", in.seatWidth, "mm");
  AddResult(list, "tk2", in.seatDepth, "mm");
  AddResult(list, "d", out.referenceDiameter, "mm");
  AddResult(list, "da", out.tipDiameter, "mm");
  AddResult(list, "df", out.rootDiameter, "mm");
  AddResult(list, "db", out.baseDiameter, "mm");
  AddResult(list, "dw", out.workingDiameter, "mm");
  AddResult(list, "s", out.toothThickness, "mm");
  AddResult(list, "sa", out.tipThickness, "mm");
  AddResult(list, "zw", out.spanTeeth, "ND");
  AddResult(list, "W", out.baseTangentLength, "mm");
  AddResult(list, "mass", out.mass, "kg");
  return list;
}

const ValueNote kResults[] = {
    {"i", "ratio", "z2 / z1"},
    {"a", "centre distance of the reference circles", "ISO 21771: m (z1 + z2) / 2"},
    {"aw", "working centre distance", "ISO 21771: a cos alfa / cos alfaw"},
    {"alfaw", "working pressure angle",
     "ISO 21771: inv alfaw = inv alfa + 2 tan alfa (x1 + x2) / (z1 + z2)"},
    {"epsilon", "contact ratio", "ISO 21771: length of the path of contact / base pitch"},
    {"n2", "speed of the wheel", "n1 / i"},
    {"v", "velocity on the reference circle", "pi d1 n1"},
    {"Ft", "tangential force", "2 T1 / dw1"},
    {"Fr", "radial force", "Ft tan alfaw"},
    {"Fn", "normal force", "Ft / cos alfaw"},
    {"KV", "dynamic factor", "ISO 6336-1, method C"},
    {"KFb", "face load factor of the root", "ISO 6336-1: KHb^NF"},
    {"Yeps", "contact ratio factor of the root", "DIN 3990-3: 0.25 + 0.75 / epsilon"},
    {"ZH", "zone factor", "ISO 6336-2: (2 cos alfaw / (cos^2 alfa sin alfaw))^0.5"},
    {"ZE", "elasticity factor", "ISO 6336-2"},
    {"Zeps", "contact ratio factor of the flank", "ISO 6336-2: ((4 - epsilon) / 3)^0.5"},
    {"pC", "pressure in the pitch point without load factors",
     "Hertz, ISO 6336-2: ZH ZE (2 T1 / (b d1^2) (u + 1) / u)^0.5"},
    {"T1", "torque of the pinion", "P / (2 pi n1)"},
    {"YF1", "form factor of the pinion", "DIN 3990-3, method C: load at the tip"},
    {"YS1", "stress correction of the pinion", "DIN 3990-3, method C"},
    {"sigmaF1", "tooth root stress of the pinion",
     "DIN 3990-3: 2 T / (d b m) YF YS Yeps KA KV KFb"},
    {"SF1", "root safety of the pinion", "DIN 3990-3: 2 sigmaFlim / sigmaF"},
    {"ZB1", "factor of single tooth contact of the pinion", "ISO 6336-2: ZB, ZD"},
    {"sigmaH1", "flank stress of the pinion",
     "ISO 6336-2: ZH ZE Zeps ZB (2 T1 / (b d1^2) (u + 1) / u KA KV KHb)^0.5"},
    {"SH1", "flank safety of the pinion", "ISO 6336-2: sigmaHlim / sigmaH"},
    {"T2", "torque of the wheel", "T1 i"},
    {"YF2", "form factor of the wheel", "DIN 3990-3, method C: load at the tip"},
    {"YS2", "stress correction of the wheel", "DIN 3990-3, method C"},
    {"sigmaF2", "tooth root stress of the wheel", "DIN 3990-3: 2 T / (d b m) YF YS Yeps KA KV KFb"},
    {"SF2", "root safety of the wheel", "DIN 3990-3: 2 sigmaFlim / sigmaF"},
    {"ZB2", "factor of single tooth contact of the wheel", "ISO 6336-2: ZB, ZD"},
    {"sigmaH2", "flank stress of the wheel",
     "ISO 6336-2: ZH ZE Zeps ZB (2 T1 / (b d1^2) (u + 1) / u KA KV KHb)^0.5"},
    {"SH2", "flank safety of the wheel", "ISO 6336-2: sigmaHlim / sigmaH"},
    {"z", "teeth of this gear", "as given"},
    {"x", "profile shift of this gear", "as given"},
    {"dh", "bore of this gear", "as given"},
    {"bk", "width of the keyway in this gear's bore", "DIN 6885-1, ASME B17.1"},
    {"tk2", "depth of the keyway in this gear's bore", "DIN 6885-1, ASME B17.1"},
    {"d", "reference diameter", "ISO 21771: m z"},
    {"da", "tip diameter", "ISO 21771: d + 2 m (ha* + x + k), shortened by k"},
    {"df", "root diameter", "ISO 21771: d - 2 m (ha* + c* - x)"},
    {"db", "base diameter", "ISO 21771: d cos alfa"},
    {"dw", "working diameter", "ISO 21771: db / cos alfaw"},
    {"s", "tooth thickness on the reference circle", "ISO 21771: m (pi / 2 + 2 x tan alfa)"},
    {"sa", "tooth thickness on the tip circle", "ISO 21771: da (s / d + inv alfa - inv alfaa)"},
    {"zw", "teeth of the base tangent length", "ISO 21771"},
    {"W", "base tangent length over zw teeth", "ISO 21771"},
    {"mass", "mass", "cylinder of the reference diameter less the bore"},
};

class SpurGearCalculation final : public Calculation {
 public:
  const char* DataFile() const override { return "GEAR1"; }
  const char* Name() const override { return "Spur gear pair"; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    const int wanted = inputs.ReadWhole(kParts);
    const GearPairInput input = ReadInput(inputs);
    inputs.RefuseUnknown(Name());
    const GearPairResult result = CalculateGearPair(input);

    std::vector<DataParameter> common;
    for (const DataParameter& read : inputs.Parameters()) {
      if (read.name != kRatio.name) common.push_back(read);
    }
    for (DataParameter& each : PairResults(result)) common.push_back(std::move(each));

    std::vector<CalculatedPart> parts;
    for (int g = 0; g < 2; ++g) {
      if ((wanted & (1 << g)) != 0) parts.push_back(MakePart(inputs, input, result, g, common));
    }
    return parts;
  }

  std::vector<ValueNote> Notes() const override {
    std::vector<ValueNote> notes;
    for (const Field* field :
         {&kPower,    &kSpeed,  &kRatio,       &kModule,      &kTeeth[0], &kTeeth[1],
          &kAngle,    &kWidth,  &kAddendum,    &kClearance,   &kFillet,   &kApplication,
          &kFaceLoad, &kGrade,  &kShift[0],    &kShift[1],    &kBore[0],  &kBore[1],
          &kKey[0],   &kKey[1], &kMaterial[0], &kMaterial[1], &kParts}) {
      notes.push_back({field->name, field->meaning});
    }
    notes.insert(notes.end(), std::begin(kResults), std::end(kResults));
    return notes;
  }

 private:
  static CalculatedPart MakePart(const Inputs& inputs, const GearPairInput& input,
                                 const GearPairResult& result, int g,
                                 const std::vector<DataParameter>& common) {
    const GearInput& gear = input.gear[g];
    CalculatedPart part;
    part.kind = PartKind::Parametric;
    part.modelId = "SpurGear";
    part.viewKey = "MODELA_FM";
    part.description = "Spur gear";
    part.size = PitchText(inputs, input.module) + " z" + std::to_string(gear.teeth) + " b" +
                inputs.Shown(input.faceWidth, "mm");
    part.caption = part.description + " " + part.size;
    part.subtype = kGearNames[g];
    part.material = gear.material->name;
    part.mass = result.gear[g].mass;
    part.parameters = common;
    for (DataParameter& each : GearParameters(gear, result.gear[g])) {
      part.parameters.push_back(std::move(each));
    }
    return part;
  }
};

}  // namespace

const Calculation& SpurGears() {
  static const SpurGearCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
