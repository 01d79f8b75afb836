// The calculation "SHAFT": a stepped shaft between two bearings; one part.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

const Calculation& Shafts();

}  // namespace hexaplan
