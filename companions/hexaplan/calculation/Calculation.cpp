#include "hexaplan/calculation/Calculation.h"

#include "hexaplan/calculation/ShaftCalculation.h"
#include "hexaplan/calculation/SheetFormatCalculation.h"
#include "hexaplan/calculation/SpurGearCalculation.h"

namespace hexaplan {

const Calculation* FindCalculation(const std::string& dataFileType) {
  const NameLess less;
  for (const Calculation* each : {&SpurGears(), &Shafts(), &SheetFormats()}) {
    if (!less(dataFileType, each->DataFile()) && !less(each->DataFile(), dataFileType)) return each;
  }
  return nullptr;
}

}  // namespace hexaplan
