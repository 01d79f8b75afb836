// A pair of external spur gears with involute teeth: geometry with profile shift, forces, and the
// safety of tooth root and flank.
//
// Sources:
//  geometry   ISO 21771 (reference, base, tip, root and working circles; tip circles shortened so
//             that the bottom clearance stays; contact ratio; base tangent length)
//  root       DIN 3990 part 3, method C: the load at the tip of the tooth, form factor YFa and
//             stress correction YSa from the 30 degree tangent to the root fillet, Yepsilon
//  flank      ISO 6336-2: zone factor ZH, elasticity factor ZE, contact ratio factor Zepsilon and
//             the factors ZB, ZD of the inner points of single tooth contact
//  dynamics   ISO 6336-1, method C: KV from accuracy grade, load and pitch-line velocity
#pragma once

#include "hexaplan/calculation/Materials.h"

namespace hexaplan {

struct GearInput {
  int teeth = 0;
  double profileShift = 0;  // in modules
  double bore = 0;          // mm, 0: no bore
  const Material* material = nullptr;
  double seatWidth = 0, seatDepth = 0;  // mm, keyway in the bore, 0: none
};

struct GearPairInput {
  double power = 0;            // kW
  double speed = 0;            // 1/min of the first gear
  double module = 0;           // mm
  double pressureAngle = 20;   // degrees
  double faceWidth = 0;        // mm
  double addendum = 1;         // of the basic rack, in modules
  double clearance = 0.25;     // at the root, in modules
  double filletRadius = 0.38;  // of the basic rack, in modules
  double applicationFactor = 1;
  double faceLoadFactor = 1;  // KHbeta
  int accuracyGrade = 7;      // ISO 1328, 3 to 12
  GearInput gear[2];
};

// One gear of the pair. Lengths in mm, stresses in MPa, angles in degrees.
struct GearResult {
  double referenceDiameter = 0, baseDiameter = 0, tipDiameter = 0, rootDiameter = 0;
  double workingDiameter = 0;
  double toothThickness = 0;  // on the reference circle
  double tipThickness = 0;    // on the tip circle
  int spanTeeth = 0;          // number of teeth of the base tangent length
  double baseTangentLength = 0;
  double torque = 0;            // Nm
  double speed = 0;             // 1/min
  double formFactor = 0;        // YFa
  double stressCorrection = 0;  // YSa
  double rootStress = 0, rootSafety = 0;
  double innerContact = 1;  // ZB of the pinion, ZD of the wheel
  double flankStress = 0, flankSafety = 0;
  double mass = 0;  // kg, cylinder of the reference diameter less the bore
};

struct GearPairResult {
  double ratio = 0;
  double workingPressureAngle = 0;
  double referenceCentreDistance = 0, centreDistance = 0;
  double contactRatio = 0;
  double velocity = 0;                                           // m/s on the reference circle
  double tangentialForce = 0, radialForce = 0, normalForce = 0;  // N on the working circle
  double dynamicFactor = 0, rootFaceLoadFactor = 0;              // KV, KFbeta
  double zoneFactor = 0, elasticityFactor = 0;                   // ZH, ZE
  double flankContactFactor = 0, rootContactFactor = 0;          // Zepsilon, Yepsilon
  double pitchPressure = 0;  // MPa, Hertz's in the pitch point, without load factors
  GearResult gear[2];
};

// Throws InputError when the pair cannot be made or run: undercut or pointed teeth, no contact
// between them all the time, a bore or keyway as large as the root circle, a speed near resonance.
GearPairResult CalculateGearPair(const GearPairInput& input);

// The YFa and YSa of a tooth, for tests against published tables.
struct RootFactors {
  double form = 0;
  double stressCorrection = 0;
};
RootFactors RootFactorsOf(int teeth, double profileShift, double tipDiameterInModules,
                          const GearPairInput& rack);

}  // namespace hexaplan
