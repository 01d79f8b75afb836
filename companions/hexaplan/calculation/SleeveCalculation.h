// The calculation "SLEEVE": a distance sleeve, pressed between two parts of a shaft. No library
// model is built for it: the host writes the body itself.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

const Calculation& Sleeves();

}  // namespace hexaplan
