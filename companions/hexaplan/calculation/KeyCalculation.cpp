// The parallel key as users meet it: fields, feature and parameters around ParallelKey.h.
#include "hexaplan/calculation/KeyCalculation.h"

#include <iterator>

#include "hexaplan/calculation/ParallelKey.h"

namespace hexaplan {

namespace {

// "d1" and not "d": the feature is no round body of its own.
constexpr Field kShaft{"d1", "mm", 40, 6, 200, "diameter of the shaft", false, 1.5};
constexpr Field kTorque{"T", "Nm", 200, 0.01, 1e6, "torque", false, 1800};
constexpr Field kWidth{"b", "mm", 0, 0, 100, "width of the key, 0: the standard's"};
constexpr Field kHeight{"h", "mm", 0, 0, 100, "height of the key, 0: the standard's"};
constexpr Field kDepth{"t1", "mm", 0, 0, 60, "depth of the keyway in the shaft, 0: the standard's"};
constexpr Field kLength{"l", "mm", 0, 0, 1000, "length of the key, 0: the shortest that holds"};
constexpr Field kForm{"form", "ND", 1, 1, 2, "1: round ends, 2: square ends", true};
constexpr Field kYield{"Re",  "MPa", 300, 50, 2000, "yield strength of the weakest of the three",
                       false, 45000};
constexpr Field kSafety{"S", "ND", 2, 1, 10, "safety that is wanted"};
constexpr Field kPlace{"x", "mm",  0,
                       0,   20000, "place of the key's middle from the shaft's left end"};
constexpr Field kStanding{
    "standing", "ND", 0, 0, 1, "0: keyway cut into the shaft, 1: key left standing on the shaft",
    true};

void ReadSection(Inputs& inputs, KeyInput& key, bool inch) {
  const KeySection standard = StandardKeyOf(key.shaftDiameter, inch);
  const auto read = [&](const Field& field, double fallback) {
    const double given = inputs.Read(field);
    const double value = given > 0 ? given : fallback;
    if (value <= 0) {
      throw InputError(field.name, "the standard has no key for a shaft of " +
                                       inputs.ShownWithUnit(key.shaftDiameter, "mm") +
                                       "; give one.");
    }
    return value;
  };
  key.section.width = read(kWidth, standard.width);
  key.section.height = read(kHeight, standard.height);
  key.section.shaftDepth = read(kDepth, standard.shaftDepth);
  if (key.section.width > key.shaftDiameter / 2) {
    throw InputError(kWidth.name, "the key is wider than half the shaft.");
  }
}

KeyInput ReadInput(Inputs& inputs) {
  const bool inch = inputs.Units() == UnitSystem::Inch;
  KeyInput key;
  key.shaftDiameter = inputs.Read(kShaft);
  key.torque = inputs.Read(kTorque);
  ReadSection(inputs, key, inch);
  key.length = inputs.Read(kLength);
  key.lengthStep = inch ? 25.4 / 8 : 2;
  key.roundEnds = inputs.ReadWhole(kForm) == 1;
  key.yieldStrength = inputs.Read(kYield);
  key.safety = inputs.Read(kSafety);
  return key;
}

std::vector<DataParameter> AllParameters(const Inputs& inputs, const KeyInput& key,
                                         const KeyResult& r) {
  std::vector<DataParameter> list = inputs.Parameters();
  const auto add = [&](const char* name, double value, const char* unit) {
    list.push_back({name, NumberText(value), unit});
  };
  add("bk", key.section.width, "mm");
  add("hk", key.section.height, "mm");
  add("tk", key.section.shaftDepth, "mm");
  add("lk", r.length, "mm");
  add("Fo", r.force, "N");
  add("lTau", r.shearLength, "mm");
  add("lP", r.crushLength, "mm");
  add("tau", r.shear, "MPa");
  add("p", r.pressure, "MPa");
  add("STau", r.shearSafety, "ND");
  add("SP", r.crushSafety, "ND");
  return list;
}

const ValueNote kResults[] = {
    {"bk", "width of the key", "DIN 6885-1, ASME B17.1"},
    {"hk", "height of the key", "DIN 6885-1, ASME B17.1"},
    {"tk", "depth of the keyway in the shaft", "DIN 6885-1, ASME B17.1"},
    {"lk", "length of the key", "the longer of lTau and lP, and the round ends"},
    {"Fo", "force at the shaft's surface", "Shigley, 7-7: 2 T / d1"},
    {"lTau", "length that shear needs", "Shigley, 7-7: Fo S / (0.577 Re b)"},
    {"lP", "length that crushing needs", "Shigley, 7-7: Fo S / (Re h / 2)"},
    {"tau", "shear stress of the key", "Shigley, 7-7: Fo / (b l)"},
    {"p", "pressure between key and hub", "Shigley, 7-7: Fo / (l h / 2)"},
    {"STau", "safety against shear", "Shigley, 7-7: 0.577 Re / tau"},
    {"SP", "safety against crushing", "Shigley, 7-7: Re / p"},
};

class KeyCalculation final : public Calculation {
 public:
  const char* DataFile() const override { return "KEYWAY"; }
  const char* Name() const override { return "Parallel key"; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    const KeyInput key = ReadInput(inputs);
    inputs.Read(kPlace);
    const bool standing = inputs.ReadWhole(kStanding) == 1;
    inputs.RefuseUnknown(Name());
    const KeyResult result = CalculateKey(key);

    CalculatedPart part;
    part.kind = standing ? PartKind::Feature : PartKind::Cut;
    part.modelId = standing ? "ShaftKey" : "Keyway";
    part.viewKey = "MODELA";
    part.description = standing ? "Key on shaft" : "Keyway";
    part.size = inputs.Shown(key.section.width, "mm") + "x" +
                inputs.Shown(key.section.height, "mm") + "x" + inputs.Shown(result.length, "mm");
    part.caption = part.description + " " + part.size;
    part.subtype = standing ? "key" : "keyway";
    part.parameters = AllParameters(inputs, key, result);
    return {part};
  }

  std::vector<ValueNote> Notes() const override {
    std::vector<ValueNote> notes;
    for (const Field* field : {&kShaft, &kTorque, &kWidth, &kHeight, &kDepth, &kLength, &kForm,
                               &kYield, &kSafety, &kPlace, &kStanding}) {
      notes.push_back({field->name, field->meaning});
    }
    notes.insert(notes.end(), std::begin(kResults), std::end(kResults));
    return notes;
  }
};

}  // namespace

const Calculation& ParallelKeys() {
  static const KeyCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
