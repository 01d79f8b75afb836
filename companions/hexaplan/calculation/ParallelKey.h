// A parallel key between shaft and hub: its section, the length that the torque needs, stresses.
//
// Sources: section and depth of the keyway DIN 6885 part 1 (ISO 773) and, for inch shafts, the
// square keys of ASME B17.1; shear and crushing by R. G. Budynas, J. K. Nisbett, Shigley's
// Mechanical Engineering Design, 9th edition, section 7-7.
#pragma once

namespace hexaplan {

// Millimetres.
struct KeySection {
  double width = 0, height = 0;
  double shaftDepth = 0;  // of the keyway in the shaft
  double hubDepth = 0;    // of the keyway in the hub
};

// The standard section for a shaft; all 0 when there is none.
KeySection StandardKeyOf(double shaftDiameter, bool inch);

struct KeyInput {
  double shaftDiameter = 0;  // mm
  double torque = 0;         // Nm
  KeySection section;
  double length = 0;         // mm; 0: the shortest that holds
  double lengthStep = 0;     // mm, lengths that are made
  bool roundEnds = false;    // they do not bear
  double yieldStrength = 0;  // MPa, of key, shaft and hub: the weakest
  double safety = 1;         // that is wanted
};

struct KeyResult {
  double force = 0;                         // N, at the shaft's surface
  double shearLength = 0, crushLength = 0;  // mm, that shear and crushing need
  double length = 0, bearingLength = 0;     // mm
  double shear = 0, pressure = 0;           // MPa
  double shearSafety = 0, crushSafety = 0;
};

// Throws InputError when the key does not hold or fits badly.
KeyResult CalculateKey(const KeyInput& input);

}  // namespace hexaplan
