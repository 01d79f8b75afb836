#include "hexaplan/calculation/Calculation.h"

#include "hexaplan/calculation/BoltedJointCalculation.h"
#include "hexaplan/calculation/CamCalculation.h"
#include "hexaplan/calculation/KeyCalculation.h"
#include "hexaplan/calculation/ShaftCalculation.h"
#include "hexaplan/calculation/SheetFormatCalculation.h"
#include "hexaplan/calculation/SleeveCalculation.h"
#include "hexaplan/calculation/SpurGearCalculation.h"
#include "hexaplan/calculation/SurfaceSymbolCalculation.h"

namespace hexaplan {

namespace {

void Convert(CalculatedPart& part, UnitSystem units) {
  for (DataParameter& each : part.parameters) {
    const double factor = FactorOf(each.unit, units);
    double value = 0.0;
    if (factor == 1.0 || !ParseNumber(each.value, value)) continue;
    each.value = NumberText(value / factor);
    each.unit = UnitName(each.unit.c_str(), units);
  }
  for (CalculatedPart& view : part.views) Convert(view, units);
}

}  // namespace

std::vector<CalculatedPart> Calculate(const Calculation& calculation, Inputs& inputs) {
  inputs.ChooseUnits();
  std::vector<CalculatedPart> parts = calculation.Run(inputs);
  for (CalculatedPart& part : parts) Convert(part, inputs.Units());
  return parts;
}

const Calculation* FindCalculation(const std::string& dataFileType) {
  const NameLess less;
  for (const Calculation* each :
       {&SpurGears(), &Shafts(), &DiscCams(), &BoltedJoints(), &ParallelKeys(), &Sleeves(),
        &SheetFormats(), &SurfaceSymbols()}) {
    if (!less(dataFileType, each->DataFile()) && !less(each->DataFile(), dataFileType)) return each;
  }
  return nullptr;
}

}  // namespace hexaplan
