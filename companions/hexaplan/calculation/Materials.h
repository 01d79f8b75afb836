// Materials that the calculations choose from by number.
#pragma once

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

// Strengths are typical figures of material quality MQ for gears (ISO 6336-5) and of sections up
// to 100 mm for shafts (EN ISO 683), rounded down.
struct Material {
  int number;
  const char* name;
  double density;           // kg/m3
  double elasticity;        // MPa
  double shearModulus;      // MPa
  double yieldStrength;     // MPa
  double tensileStrength;   // MPa, of the core where the surface is hardened
  double rootEndurance;     // MPa, nominal bending endurance limit of a tooth root, pulsating
  double contactEndurance;  // MPa, endurance limit for contact pressure
};

inline constexpr int kLastMaterial = 6;

// The material of a number from 1 to kLastMaterial.
const Material& MaterialOf(int number);

}  // namespace hexaplan
