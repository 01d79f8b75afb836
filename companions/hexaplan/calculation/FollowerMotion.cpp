#include "hexaplan/calculation/FollowerMotion.h"

#include <cmath>
#include <iterator>
#include <numbers>

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;

Motion Cycloidal(double u) {
  const double turn = 2 * kPi * u;
  return {u - std::sin(turn) / (2 * kPi), 1 - std::cos(turn), 2 * kPi * std::sin(turn),
          4 * kPi * kPi * std::cos(turn)};
}

Motion Harmonic(double u) {
  const double turn = kPi * u;
  return {(1 - std::cos(turn)) / 2, kPi / 2 * std::sin(turn), kPi * kPi / 2 * std::cos(turn),
          -kPi * kPi * kPi / 2 * std::sin(turn)};
}

// The polynomial of these coefficients, from power `first` on.
template <int terms>
Motion Polynomial(const double (&coefficients)[terms], int first, double u) {
  Motion motion;
  for (int i = 0; i < terms; ++i) {
    const int n = first + i;
    const double c = coefficients[i];
    motion.displacement += c * std::pow(u, n);
    motion.velocity += c * n * std::pow(u, n - 1);
    motion.acceleration += c * n * (n - 1) * std::pow(u, n - 2);
    motion.jerk += c * n * (n - 1) * (n - 2) * std::pow(u, n - 3);
  }
  return motion;
}

Motion Polynomial345(double u) { return Polynomial({10.0, -15.0, 6.0}, 3, u); }
Motion Polynomial4567(double u) { return Polynomial({35.0, -84.0, 70.0, -20.0}, 4, u); }

struct Law {
  const char* name;
  Motion (*at)(double progress);
  Motion peaks;
};

// In the order of their numbers. The peaks lie where the next derivative vanishes.
const Law kLaws[kLastMotionLaw] = {
    {"cycloidal", Cycloidal, {1, 2, 2 * kPi, 4 * kPi* kPi}},
    {"harmonic", Harmonic, {1, kPi / 2, kPi* kPi / 2, kPi* kPi* kPi / 2}},
    {"polynomial 3-4-5", Polynomial345, {1, 15.0 / 8, 10 / std::sqrt(3.0), 60}},
    {"polynomial 4-5-6-7", Polynomial4567, {1, 35.0 / 16, 84 * std::sqrt(5.0) / 25, 52.5}},
};

const Law& Find(MotionLaw law) { return kLaws[static_cast<int>(law) - 1]; }

}  // namespace

Motion MotionAt(MotionLaw law, double progress) { return Find(law).at(progress); }

Motion PeaksOf(MotionLaw law) { return Find(law).peaks; }

const char* NameOf(MotionLaw law) { return Find(law).name; }

}  // namespace hexaplan
