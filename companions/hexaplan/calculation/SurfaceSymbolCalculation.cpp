#include "hexaplan/calculation/SurfaceSymbolCalculation.h"

namespace hexaplan {

namespace {

constexpr Field kRoughness{"Ra", "um", 3.2, 0.006, 50, "arithmetical mean roughness"};
constexpr Field kProcess{kSymbolProcessName,
                         "ND",
                         0,
                         0,
                         2,
                         "0: any process, 1: material is removed, 2: it is not",
                         true};

class SurfaceSymbolCalculation : public Calculation {
 public:
  const char* DataFile() const override { return "SURFACE"; }
  const char* Name() const override { return "Surface texture"; }
  bool HasOlderLayout() const override { return false; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    CalculatedPart part;
    part.kind = PartKind::Symbol;
    const double roughness = inputs.Read(kRoughness);
    inputs.ReadWhole(kProcess);
    inputs.RefuseUnknown(Name());
    part.modelId = "Surface";
    part.caption = "Surface Ra " + NumberText(roughness);
    part.description = "Surface texture symbol";
    part.size = "Ra " + NumberText(roughness);
    part.parameters = inputs.Parameters();
    return {part};
  }

  std::vector<ValueNote> Notes() const override {
    return {{kRoughness.name, kRoughness.meaning}, {kProcess.name, kProcess.meaning}};
  }
};

}  // namespace

const Calculation& SurfaceSymbols() {
  static const SurfaceSymbolCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
