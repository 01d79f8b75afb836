// A preloaded bolted joint in tension: stiffness of bolt and clamped parts, preload and tightening
// torque, load in service, safeties.
//
// Source: R. G. Budynas, J. K. Nisbett, Shigley's Mechanical Engineering Design, 9th edition,
// chapter 8: bolt stiffness (8-17), clamped parts as frusta of 30 degrees (8-19, 8-20), stiffness
// constant (f), tightening torque (8-27), safeties against yielding, overload and separation (8-28
// to 8-30), preload (8-31, 8-32); thread lengths (8-13, 8-14). Stress areas as in ISO 898-1 and
// ASME B1.1.
#pragma once

#include <vector>

namespace hexaplan {

// A plate or a washer, in the order from the bolt's head to the nut.
struct ClampedLayer {
  double thickness = 0;   // mm
  double elasticity = 0;  // MPa
};

struct BoltedJointInput {
  double diameter = 0, pitch = 0;  // mm, of the thread
  bool inchThread = false;
  double length = 0;          // mm, of the bolt below its head; 0: the shortest that fits
  double lengthStep = 0;      // mm, lengths that are made
  double nutHeight = 0;       // mm
  double washerDiameter = 0;  // mm, of the face under head and nut
  double boltElasticity = 0;  // MPa
  double proofStrength = 0;   // MPa
  std::vector<ClampedLayer> layers;
  int bolts = 1;
  double totalLoad = 0;     // N, on all bolts
  double preload = 0;       // N, on one bolt; 0: by the utilisation
  double utilisation = 0;   // of the proof load, 0.75 when bolts are used again
  double torqueFactor = 0;  // K
};

// Forces in N of one bolt, stiffness in N/mm.
struct BoltedJointResult {
  double stressArea = 0, shankArea = 0;  // mm2
  double grip = 0, length = 0;           // mm
  double threadInGrip = 0;               // mm
  double boltStiffness = 0, partStiffness = 0;
  double stiffnessConstant = 0;  // C
  double preload = 0, load = 0;
  double torque = 0;                            // Nm
  double boltForce = 0, clampForce = 0;         // in service
  double preloadStress = 0, serviceStress = 0;  // MPa
  // Safeties; infinite without a load.
  double yielding = 0, overload = 0, separation = 0;
};

// Throws InputError when the bolt does not fit or does not hold.
BoltedJointResult CalculateBoltedJoint(const BoltedJointInput& input);

// The coarse pitch of a diameter, ISO 261 or UNC; 0 when there is none.
double CoarsePitchOf(double diameter, bool inchThread);

// Forces, stresses and safeties of a joint whose areas, stiffnesses and preload are known.
void LoadBoltedJoint(const BoltedJointInput& input, BoltedJointResult& result);

}  // namespace hexaplan
