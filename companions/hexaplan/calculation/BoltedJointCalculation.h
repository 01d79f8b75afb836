// The calculation "THRJOIN": a bolted joint; the bolt is the part, nut and washer are its views.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

const Calculation& BoltedJoints();

}  // namespace hexaplan
