// Laws by which a cam moves its follower from one dwell to the next.
//
// Sources: H. A. Rothbart (ed.), Cam Design Handbook, chapters 2 and 3; R. L. Norton, Design of
// Machinery, chapter "Cam design" (the same laws in the same normal form).
#pragma once

namespace hexaplan {

enum class MotionLaw { Cycloidal = 1, Harmonic = 2, Polynomial345 = 3, Polynomial4567 = 4 };
inline constexpr int kLastMotionLaw = 4;

// A rise of 1 within a turn of 1: displacement and its derivatives.
struct Motion {
  double displacement = 0;
  double velocity = 0;
  double acceleration = 0;
  double jerk = 0;
};

// The motion after the part `progress` of the turn, 0 to 1.
Motion MotionAt(MotionLaw law, double progress);

// The largest magnitudes of velocity, acceleration and jerk; the displacement is 1.
Motion PeaksOf(MotionLaw law);

const char* NameOf(MotionLaw law);

}  // namespace hexaplan
