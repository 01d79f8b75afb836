// Sheet formats of drawings: nothing is calculated, the user chooses size and scale.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

inline constexpr char kSheetScaleName[] = "xxScale";
inline constexpr char kSheetNumberName[] = "xxSheet";

// Millimetres, lying on its side.
struct SheetSize {
  double width;
  double height;
};

// Size of a sheet of the A series, from 0 to 4.
SheetSize SizeOfSheet(int number);

const Calculation& SheetFormats();

}  // namespace hexaplan
