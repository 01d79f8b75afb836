// Symbols for the texture of a surface, as drawings bear them: nothing is calculated, the user
// chooses.
#pragma once

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {

inline constexpr char kSymbolProcessName[] = "process";

// How the surface may be made; the symbol shows it.
enum class SurfaceProcess { Any = 0, Removal = 1, NoRemoval = 2 };

// Height of the symbol beside a text of 3.5 mm, and the side of its angle that stands on the
// surface.
inline constexpr double kSymbolHeight = 10.5;
inline constexpr double kSymbolSide = 5;

const Calculation& SurfaceSymbols();

}  // namespace hexaplan
