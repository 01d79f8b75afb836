// A stepped shaft on two bearings: reactions, bending and torsion, stresses, deflection, mass.
//
// Sources: equilibrium of a beam on two supports; Euler-Bernoulli bending (curvature = moment over
// EI), integrated exactly section by section; Saint-Venant torsion of round bars; equivalent stress
// by the distortion energy (von Mises). As in Shigley, Mechanical Engineering Design, chapters 3, 4
// and 7. Notches (ShaftNotches.h) count in fatigue; against yielding counts the section that they
// leave, without their factor. They make the shaft no softer.
//
// Axes: x along the shaft from its left end, y and z across it.
#pragma once

#include <vector>

#include "hexaplan/calculation/Fields.h"
#include "hexaplan/calculation/ShaftNotches.h"

namespace hexaplan {

struct ShaftSection {
  double diameter = 0;     // mm, of a cone at its left end
  double length = 0;       // mm
  double endDiameter = 0;  // mm, of a cone at its right end; 0: a cylinder
  double EndDiameter() const { return endDiameter > 0 ? endDiameter : diameter; }
};

// A notch that stands from one place to another, or in one. Millimetres.
struct Notch {
  double begin = 0, end = 0;
  double diameter = 0;  // of the section whose stress it raises
  NotchFactors factors;
  double radius = 0;  // at its root; 0: the factors are those of fatigue already
};

// How the shaft is used, and what fatigue depends on besides notches.
struct ShaftFatigue {
  double tensileStrength = 0;  // MPa; 0: fatigue is not calculated
  Surface surface = Surface::Machined;
  double reliability = 0.99;     // a part of 1
  bool rotates = true;           // in the loads, so that bending alternates
  double alternatingTorque = 0;  // part of the torque that does, 0 to 1
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
  std::vector<Notch> notches;
  ShaftFatigue fatigue;
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

// A notch where it is worst.
struct NotchResult {
  double x = 0;  // mm
  NotchFactors theoretical, fatigue;
  double endurance = 0;  // MPa, of this section of the shaft
  double use = 0;        // one over the safety; 0: no load
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
  std::vector<NotchResult> notches;               // in the order of the input
  double surfaceFactor = 0, reliabilityFactor = 0;
};

// Throws InputError when the shaft is not held or its loads are not balanced.
ShaftResult CalculateShaft(const ShaftInput& input);

}  // namespace hexaplan
