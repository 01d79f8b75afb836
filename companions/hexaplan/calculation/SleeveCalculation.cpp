#include "hexaplan/calculation/SleeveCalculation.h"

#include <iterator>

#include "hexaplan/calculation/Materials.h"

namespace hexaplan {

namespace {

constexpr double kPi = 3.141592653589793;

constexpr Field kOuter{"da", "mm", 40, 1, 2000, "outer diameter"};
constexpr Field kBore{"dh", "mm", 30, 0, 2000, "bore"};
constexpr Field kLength{"b", "mm", 20, 0.1, 5000, "length"};
constexpr Field kForce{"F", "N", 5000, 0, 1e8, "axial force that presses it"};
constexpr Field kMaterial{"mat", "ND", 1, 1, kLastMaterial, "material", true};

const ValueNote kResults[] = {
    {"A", "area of the section", "pi (da^2 - dh^2) / 4"},
    {"sigma", "compressive stress", "Shigley, ch. 3: F / A"},
    {"S", "safety against yielding", "Shigley, ch. 1: Re / sigma"},
    {"dl", "shortening under the force", "Shigley, ch. 4: F b / (A E)"},
    {"mass", "mass", "A b ro"},
    {"ro", "density", "of the material"},
};

class SleeveCalculation final : public Calculation {
 public:
  const char* DataFile() const override { return "SLEEVE"; }
  const char* Name() const override { return "Distance sleeve"; }
  bool HasOlderLayout() const override { return false; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    const double outer = inputs.Read(kOuter);
    const double bore = inputs.Read(kBore);
    const double length = inputs.Read(kLength);
    const double force = inputs.Read(kForce);
    const Material& material = MaterialOf(inputs.ReadWhole(kMaterial));
    inputs.RefuseUnknown(Name());
    if (bore >= outer) throw InputError(kBore.name, "the bore leaves nothing of the sleeve.");

    const double area = kPi / 4 * (outer * outer - bore * bore);
    const double stress = force / area;
    CalculatedPart part;
    part.kind = PartKind::Model;
    part.modelId = "Sleeve";
    part.viewKey = "MODEL";
    part.description = "Distance sleeve";
    part.size = inputs.Shown(outer, "mm") + "x" + inputs.Shown(bore, "mm") + "x" +
                inputs.Shown(length, "mm");
    part.caption = part.description + " " + part.size;
    part.material = material.name;
    part.mass = area * length * 1e-9 * material.density;
    part.parameters = inputs.Parameters();
    const auto add = [&](const char* name, double value, const char* unit) {
      part.parameters.push_back({name, NumberText(value), unit});
    };
    add("A", area, "mm2");
    add("sigma", stress, "MPa");
    // Without a force it holds, whatever it is made of.
    if (stress > 0) add("S", material.yieldStrength / stress, "ND");
    add("dl", stress * length / material.elasticity, "mm");
    add("mass", part.mass, "kg");
    add("ro", material.density, "kg/m3");
    return {part};
  }

  std::vector<ValueNote> Notes() const override {
    std::vector<ValueNote> notes;
    for (const Field* field : {&kOuter, &kBore, &kLength, &kForce, &kMaterial}) {
      notes.push_back({field->name, field->meaning});
    }
    notes.insert(notes.end(), std::begin(kResults), std::end(kResults));
    return notes;
  }
};

}  // namespace

const Calculation& Sleeves() {
  static const SleeveCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
