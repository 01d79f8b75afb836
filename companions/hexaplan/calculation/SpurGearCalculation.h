// The calculation "GEAR1": a spur gear pair; one part for each gear that is wanted.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

const Calculation& SpurGears();

}  // namespace hexaplan
