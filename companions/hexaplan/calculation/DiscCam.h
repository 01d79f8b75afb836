// A disc cam with a translating roller follower: rise, dwell, return, dwell in one turn.
//
// Sources:
//  motion      FollowerMotion.h
//  pressure    tan(phi) = (s' - e) / (sqrt(Rp^2 - e^2) + s) with the prime circle's radius Rp and
//  angle       the offset e; R. L. Norton, Design of Machinery, "Pressure angle - roller followers"
//  curvature   of the pitch curve, from its parametric form; for e = 0 it is the formula of H. A.
//              Rothbart (ed.), Cam Design Handbook, chapter 6
//  profile     the pitch curve moved inwards by the roller's radius along its normal (same chapter)
#pragma once

#include <vector>

#include "hexaplan/calculation/FollowerMotion.h"

namespace hexaplan {

struct CamInput {
  double baseRadius = 0;    // mm, of the profile in the lower dwell
  double rollerRadius = 0;  // mm, 0: a knife edge
  double offset = 0;        // mm, of the follower's axis; positive makes the rise's angle smaller
  double lift = 0;          // mm
  double riseAngle = 0, upperDwell = 0, returnAngle = 0;  // degrees; the lower dwell is the rest
  MotionLaw riseLaw = MotionLaw::Cycloidal, returnLaw = MotionLaw::Cycloidal;
  double speed = 0;               // 1/min
  double force = 0;               // N, on the follower along its axis
  double width = 0, bore = 0;     // mm
  double pressureAngleLimit = 0;  // degrees
  double density = 0;             // kg/m3
  int points = 0;                 // of the profile, evenly over the turn
};

// The follower when the cam has turned by an angle. Derivatives are by the angle in radians.
struct CamState {
  double displacement = 0;       // mm
  double slope = 0, second = 0;  // mm/rad, mm/rad2
  double pressureAngle = 0;      // degrees, positive while the cam pushes
  // Radius of curvature of the pitch curve in mm, negative where it is hollow; infinite where it
  // is straight.
  double pitchRadius = 0;
  double along = 0, across = 0;  // mm, the profile's point: along the follower's direction, aside
};
CamState CamStateAt(const CamInput& input, double degrees);

struct CamStroke {
  double maxVelocity = 0;                               // m/s
  double maxAcceleration = 0;                           // m/s2
  double maxJerk = 0;                                   // m/s3
  double maxPressureAngle = 0, maxPressureAngleAt = 0;  // degrees
};

// Seen from the cam's centre: the direction in degrees, turning on from point to point, and the
// distance in mm.
struct CamPoint {
  double direction = 0;
  double distance = 0;
};

struct CamResult {
  CamStroke rise, fall;
  double minPitchRadius = 0, minPitchRadiusAt = 0;  // mm, degrees; where the pitch curve is convex
  double minProfileRadius = 0;                      // mm, there
  double maxNormalForce = 0;                        // N
  double maxTorque = 0;                             // Nm
  double area = 0;                                  // mm2, of the profile
  double mass = 0;                                  // kg
  std::vector<CamPoint> profile;
};

// Throws InputError when the cam cannot be made or run.
CamResult CalculateCam(const CamInput& input);

}  // namespace hexaplan
