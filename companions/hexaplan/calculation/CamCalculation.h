// The calculation "CAM": a disc cam; one part, whose profile goes to the CAD point by point.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

const Calculation& DiscCams();

}  // namespace hexaplan
