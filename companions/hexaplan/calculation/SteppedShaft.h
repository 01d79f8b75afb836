// A stepped shaft on two bearings: reactions, bending and torsion, stresses, deflection, mass.
//
// Sources: equilibrium of a beam on two supports; Euler-Bernoulli bending (curvature = moment over
// EI), integrated exactly section by section; Saint-Venant torsion of round bars; equivalent stress
// by the distortion energy (von Mises). As in Shigley, Mechanical Engineering Design, chapters 3, 4
// and 7. Notches are not counted: stresses are nominal.
//
// Axes: x along the shaft from its left end, y and z across it.
#pragma once

#include <vector>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

struct ShaftSection {
  double diameter = 0;  // mm
  double length = 0;    // mm
};

// A load in one place. Forces in N, moments in Nm.
struct ShaftLoad {
  double x = 0;  // mm
  double forceX = 0, forceY = 0, forceZ = 0;
  double torque = 0;                  // about x
  double bendingY = 0, bendingZ = 0;  // in the planes x-y and x-z; positive raises the moment
};

struct ShaftInput {
  std::vector<ShaftSection> sections;
  double support[2] = {0, 0};  // mm
  int axialSupport = 0;        // the support that takes the axial force
  std::vector<ShaftLoad> loads;
  double elasticity = 0, shearModulus = 0;  // MPa
  double density = 0;                       // kg/m3
};

// The shaft at one place, seen from one side: where something jumps there are two states.
struct ShaftState {
  double x = 0;
  double diameter = 0;                      // mm
  double momentY = 0, momentZ = 0;          // Nm, in the planes x-y and x-z
  double axialForce = 0;                    // N, tension positive
  double torque = 0;                        // Nm
  double slopeY = 0, slopeZ = 0;            // rad
  double deflectionY = 0, deflectionZ = 0;  // mm
};

struct ShaftResult {
  double length = 0;                              // mm
  double mass = 0;                                // kg
  double centreOfMass = 0;                        // mm
  double reactionX = 0;                           // N, at the axial support
  double reactionY[2] = {}, reactionZ[2] = {};    // N
  std::vector<ShaftState> line;                   // left to right
  double maxMoment = 0, maxMomentAt = 0;          // Nm, mm
  double maxTorque = 0;                           // Nm
  double maxBending = 0, maxTorsion = 0;          // MPa
  double maxEquivalent = 0, maxEquivalentAt = 0;  // MPa, mm
  double maxDeflection = 0, maxDeflectionAt = 0;  // mm, mm
  double supportSlope[2] = {};                    // rad
  double twist = 0;                               // degrees from end to end
};

// Throws InputError when the shaft is not held or its loads are not balanced.
ShaftResult CalculateShaft(const ShaftInput& input);

}  // namespace hexaplan
