#include "hexaplan/calculation/SheetFormatCalculation.h"

#include <algorithm>
#include <array>

namespace hexaplan {

namespace {

constexpr std::array<SheetSize, 5> kSizes = {
    {{1189, 841}, {841, 594}, {594, 420}, {420, 297}, {297, 210}}};

constexpr Field kScale{kSheetScaleName, "ND", 1, 0.001, 1000, "scale of the drawing"};
constexpr Field kNumber{
    kSheetNumberName, "ND", 3, 0, 4, "number of the sheet in the A series", true};

class SheetFormatCalculation : public Calculation {
 public:
  const char* DataFile() const override { return "xformats"; }
  const char* Name() const override { return "Sheet format"; }
  bool HasOlderLayout() const override { return false; }

  std::vector<CalculatedPart> Run(Inputs& inputs) const override {
    CalculatedPart part;
    part.kind = PartKind::Format;
    const double scale = inputs.Read(kScale);
    part.modelId = "A" + std::to_string(inputs.ReadWhole(kNumber));
    inputs.RefuseUnknown(Name());
    part.caption = "Sheet " + part.modelId;
    part.description = "Sheet format";
    part.size = part.modelId + " 1:" + NumberText(1.0 / scale);
    part.parameters = inputs.Parameters();
    return {part};
  }

  std::vector<ValueNote> Notes() const override {
    return {{kScale.name, kScale.meaning}, {kNumber.name, kNumber.meaning}};
  }
};

}  // namespace

SheetSize SizeOfSheet(int number) {
  return kSizes[static_cast<std::size_t>(std::clamp(number, 0, 4))];
}

const Calculation& SheetFormats() {
  static const SheetFormatCalculation calculation;
  return calculation;
}

}  // namespace hexaplan
