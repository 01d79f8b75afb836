#include "hexaplan/calculation/ShaftNotches.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kInch = 25.4;                  // mm
constexpr double kKsi = 6.894757;               // MPa
constexpr double kHighestSensitive = 250;       // ksi, up to which Neuber's constants are given
constexpr double kHighestEndurance = 700;       // MPa
constexpr double kHardestOfFormula = 1400;      // MPa
constexpr double kSmallestOfSizeFactor = 2.79;  // mm

// A chart's curve for one step D/d: factor (r/d)^exponent.
struct ShoulderCurve {
  double step, factor, exponent;
};

constexpr ShoulderCurve kBendingCurves[] = {
    {1.01, 0.91938, -0.17032}, {1.02, 0.96048, -0.17711}, {1.03, 0.98061, -0.18381},
    {1.05, 0.98137, -0.19653}, {1.07, 0.97527, -0.20958}, {1.10, 0.95120, -0.23757},
    {1.20, 0.97098, -0.21796}, {1.50, 0.93836, -0.25759}, {2.00, 0.90879, -0.28598},
    {3.00, 0.89334, -0.30860}, {6.00, 0.87868, -0.33243},
};

constexpr ShoulderCurve kTorsionCurves[] = {
    {1.09, 0.90337, -0.12692},
    {1.20, 0.83425, -0.21649},
    {1.33, 0.84897, -0.23161},
    {2.00, 0.86331, -0.23865},
};

// Between two curves in proportion to the step; no step, no notch.
template <std::size_t count>
double OnCurves(const ShoulderCurve (&curves)[count], double step, double radiusPart) {
  const auto at = [&](const ShoulderCurve& curve) {
    return std::max(1.0, curve.factor * std::pow(radiusPart, curve.exponent));
  };
  double lowerStep = 1.0;
  double lower = 1.0;
  for (const ShoulderCurve& curve : curves) {
    const double upper = at(curve);
    if (step <= curve.step) {
      return lower + (upper - lower) * (step - lowerStep) / (curve.step - lowerStep);
    }
    lowerStep = curve.step;
    lower = upper;
  }
  return lower;
}

// A term of the groove's formula: a constant, a part of sqrt(h/r) and one of h/r.
struct GrooveTerm {
  double constant, root, linear;
};

// Up to which h/r the terms hold; those of the last row go on.
struct GrooveRow {
  double most;
  GrooveTerm terms[4];
};

constexpr GrooveRow kBendingGroove[] = {
    {2.0,
     {{0.455, 3.354, -0.769},
      {0.891, -12.721, 4.593},
      {0.286, 15.481, -6.392},
      {-0.632, -6.115, 2.568}}},
    {50.0,
     {{0.935, 1.922, 0.004},
      {-0.552, -5.327, 0.086},
      {0.754, 6.281, -0.121},
      {-0.138, -2.876, 0.031}}},
};

constexpr GrooveRow kTorsionGroove[] = {
    {2.0,
     {{1.245, 0.264, 0.491},
      {-3.030, 3.269, -3.633},
      {7.199, -11.286, 8.318},
      {-4.414, 7.753, -5.176}}},
    {50.0,
     {{1.651, 0.614, 0.040},
      {-4.794, -0.314, -0.217},
      {8.457, -0.962, 0.389},
      {-4.314, 0.662, -0.212}}},
};

double OfGroove(const GrooveRow (&rows)[2], double diameter, double depth, double radius) {
  const double slender = depth / radius;
  const GrooveRow& row = slender <= rows[0].most ? rows[0] : rows[1];
  double sum = 0.0;
  double power = 1.0;
  for (const GrooveTerm& term : row.terms) {
    sum += (term.constant + term.root * std::sqrt(slender) + term.linear * slender) * power;
    power *= 2.0 * depth / diameter;
  }
  return std::max(1.0, sum);
}

// Square root of Neuber's constant, in the root of mm, by a polynomial of the strength in ksi.
double NeuberRoot(const double (&polynomial)[4], double tensileStrength) {
  const double ksi = std::min(tensileStrength / kKsi, kHighestSensitive);
  double root = 0.0;
  for (int i = 3; i >= 0; --i) root = root * ksi + polynomial[i];
  return std::max(0.0, root) * std::sqrt(kInch);
}

constexpr double kBendingNeuber[] = {0.246, -3.08e-3, 1.51e-5, -2.67e-8};
constexpr double kTorsionNeuber[] = {0.190, -2.51e-3, 1.35e-5, -2.67e-8};

struct SurfaceRow {
  double factor, exponent;  // of the strength in MPa
};
constexpr SurfaceRow kSurfaces[kLastSurface] = {
    {1.58, -0.085}, {4.51, -0.265}, {57.7, -0.718}, {272, -0.995}};

// How far from the middle, in deviations, the normal distribution leaves `part` below.
double NormalDeviate(double part) {
  double low = 0.0;
  double high = 10.0;
  for (int i = 0; i < 60; ++i) {
    const double middle = (low + high) / 2.0;
    (std::erfc(middle / std::numbers::sqrt2) / 2.0 > 1.0 - part ? low : high) = middle;
  }
  return low;
}

}  // namespace

NotchFactors ShoulderNotch(double large, double small, double radius) {
  const double step = large / small;
  return {OnCurves(kBendingCurves, step, radius / small),
          OnCurves(kTorsionCurves, step, radius / small)};
}

NotchFactors GrooveNotch(double diameter, double depth, double radius) {
  return {OfGroove(kBendingGroove, diameter, depth, radius),
          OfGroove(kTorsionGroove, diameter, depth, radius)};
}

NotchFactors CrossHoleNotch(double diameter, double hole) {
  const double square = diameter * diameter;
  const double bending = kPi / 32.0 * square * diameter;
  const double lost = hole * square / 6.0;
  return {3.0 * bending / (bending - lost), 2.0 * 2.0 * bending / (2.0 * bending - lost)};
}

NotchFactors PressFitNotch(double tensileStrength) {
  const double bending = 2.7 * std::pow(tensileStrength / 1000.0, 0.43);
  return {std::max(1.0, bending), std::max(1.0, 0.65 * bending)};
}

NotchFactors FatigueNotch(const NotchFactors& theoretical, double radius, double tensileStrength) {
  const auto part = [&](const double(&polynomial)[4]) {
    return 1.0 / (1.0 + NeuberRoot(polynomial, tensileStrength) / std::sqrt(radius));
  };
  return {1.0 + part(kBendingNeuber) * (theoretical.bending - 1.0),
          1.0 + part(kTorsionNeuber) * (theoretical.torsion - 1.0)};
}

double SurfaceFactor(Surface surface, double tensileStrength) {
  const SurfaceRow& row = kSurfaces[static_cast<int>(surface) - 1];
  return std::min(1.0, row.factor * std::pow(tensileStrength, row.exponent));
}

double SizeFactor(double diameter) {
  const double d = std::max(diameter, kSmallestOfSizeFactor);
  return d <= 51.0 ? 1.24 * std::pow(d, -0.107) : 1.51 * std::pow(d, -0.157);
}

double ReliabilityFactor(double reliability) { return 1.0 - 0.08 * NormalDeviate(reliability); }

double TestBarEndurance(double tensileStrength) {
  return tensileStrength <= kHardestOfFormula ? 0.5 * tensileStrength : kHighestEndurance;
}

double FatigueUse(const FatigueLoad& load, double diameter, const NotchFactors& fatigue,
                  double endurance, double tensileStrength) {
  const double modulus = kPi / 32.0 * std::pow(diameter, 3) / 1000.0;  // of Nm
  const double area = kPi / 4.0 * diameter * diameter;
  const auto combined = [&](double bending, double torque, double axial) {
    const double normal = fatigue.bending * (bending / modulus + axial / area);
    const double shear = fatigue.torsion * torque / (2.0 * modulus);
    return std::hypot(normal, std::sqrt(3.0) * shear);
  };
  return combined(load.bendingAmplitude, load.torqueAmplitude, 0.0) / endurance +
         combined(load.bendingMean, load.torqueMean, load.axialMean) / tensileStrength;
}

}  // namespace hexaplan
