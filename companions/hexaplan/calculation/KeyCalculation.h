// The calculation "KEYWAY": a parallel key; the part is a feature of a shaft, the keyway cut into
// it or the key left standing on it.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

const Calculation& ParallelKeys();

}  // namespace hexaplan
