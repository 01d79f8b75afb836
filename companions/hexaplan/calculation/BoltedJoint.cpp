#include "hexaplan/calculation/BoltedJoint.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kInch = 25.4;                  // mm
const double kConeTangent = std::tan(kPi / 6);  // of the frusta

struct Thread {
  double diameter;
  double pitch;
};

constexpr Thread kMetricThreads[] = {
    {3, 0.5}, {4, 0.7},  {5, 0.8},  {6, 1},    {8, 1.25}, {10, 1.5}, {12, 1.75}, {14, 2},
    {16, 2},  {18, 2.5}, {20, 2.5}, {22, 2.5}, {24, 3},   {27, 3},   {30, 3.5},  {33, 3.5},
    {36, 4},  {39, 4},   {42, 4.5}, {48, 5},   {56, 5.5}, {64, 6},
};

// Inches and threads for each inch.
constexpr Thread kUnifiedThreads[] = {
    {0.25, 20}, {0.3125, 18}, {0.375, 16}, {0.4375, 14}, {0.5, 13}, {0.5625, 12}, {0.625, 11},
    {0.75, 10}, {0.875, 9},   {1, 8},      {1.125, 7},   {1.25, 7}, {1.375, 6},   {1.5, 6},
};

double StressArea(const BoltedJointInput& input) {
  const double cut = input.inchThread ? 0.9743 : 0.9382;
  const double diameter = input.diameter - cut * input.pitch;
  return kPi / 4 * diameter * diameter;
}

// The threaded length of a bolt of that length.
double ThreadLength(const BoltedJointInput& input, double length) {
  if (input.inchThread) return 2 * input.diameter + (length <= 6 * kInch ? 0.25 : 0.5) * kInch;
  return 2 * input.diameter + (length <= 125 ? 6 : length <= 200 ? 12 : 25);
}

void FindLength(const BoltedJointInput& input, BoltedJointResult& result) {
  for (const ClampedLayer& layer : input.layers) result.grip += layer.thickness;
  const double least = result.grip + input.nutHeight;
  const double shortest = std::ceil(least / input.lengthStep - 1e-9) * input.lengthStep;
  result.length = input.length > 0 ? input.length : shortest;
  if (result.length < least) {
    throw InputError("L", "the bolt is too short for the parts and the nut.");
  }
  const double shank = std::max(0.0, result.length - ThreadLength(input, result.length));
  if (shank >= result.grip) {
    throw InputError("L",
                     "the thread ends outside the parts, so that the nut cannot be tightened.");
  }
  result.threadInGrip = result.grip - shank;
}

double BoltStiffness(const BoltedJointInput& input, const BoltedJointResult& result) {
  const double shank = result.grip - result.threadInGrip;
  return input.boltElasticity /
         (result.threadInGrip / result.stressArea + shank / result.shankArea);
}

// What a frustum gives way under 1 N, mm/N. It begins `depth` below the face that is nearer.
double FrustumFlexibility(const BoltedJointInput& input, double depth, double thickness,
                          double elasticity) {
  const double d = input.diameter;
  const double begin = input.washerDiameter + 2 * depth * kConeTangent;
  const double end = begin + 2 * thickness * kConeTangent;
  const double ratio = (end - d) * (begin + d) / ((end + d) * (begin - d));
  return std::log(ratio) / (kPi * elasticity * d * kConeTangent);
}

// The frusta grow from both faces to the middle of the grip.
double PartStiffness(const BoltedJointInput& input, double grip) {
  const double middle = grip / 2;
  double flexibility = 0;
  double begin = 0;
  for (const ClampedLayer& layer : input.layers) {
    const double end = begin + layer.thickness;
    const double upper = std::max(0.0, std::min(end, middle) - begin);
    const double lower = std::max(0.0, end - std::max(begin, middle));
    if (upper > 0) flexibility += FrustumFlexibility(input, begin, upper, layer.elasticity);
    if (lower > 0) flexibility += FrustumFlexibility(input, grip - end, lower, layer.elasticity);
    begin = end;
  }
  return 1 / flexibility;
}

double Quotient(double value, double divisor) {
  return divisor > 0 ? value / divisor : std::numeric_limits<double>::infinity();
}

void CheckHolds(const BoltedJointInput& input, const BoltedJointResult& result) {
  if (result.preloadStress > input.proofStrength) {
    throw InputError("Fi", "the preload stresses the bolt to " + NumberText(result.preloadStress) +
                               " MPa, above its proof strength.");
  }
  if (result.yielding < 1) {
    throw InputError("F", "the bolts yield: their stress in service is " +
                              NumberText(result.serviceStress) +
                              " MPa; take more or thicker bolts or a higher grade.");
  }
  if (result.separation < 1) {
    throw InputError("F", "the joint opens under the load; take more bolts or more preload.");
  }
}

}  // namespace

double CoarsePitchOf(double diameter, bool inchThread) {
  const auto equals = [&](double other) { return std::abs(diameter - other) < 1e-3 * other; };
  if (inchThread) {
    for (const Thread& thread : kUnifiedThreads) {
      if (equals(thread.diameter * kInch)) return kInch / thread.pitch;
    }
    return 0;
  }
  for (const Thread& thread : kMetricThreads) {
    if (equals(thread.diameter)) return thread.pitch;
  }
  return 0;
}

void LoadBoltedJoint(const BoltedJointInput& input, BoltedJointResult& result) {
  const double area = result.stressArea;
  const double c = result.boltStiffness / (result.boltStiffness + result.partStiffness);
  result.stiffnessConstant = c;
  const double proofLoad = input.proofStrength * area;
  result.preload = input.preload > 0 ? input.preload : input.utilisation * proofLoad;
  result.load = input.totalLoad / input.bolts;
  result.torque = input.torqueFactor * result.preload * input.diameter / 1000;
  result.boltForce = result.preload + c * result.load;
  result.clampForce = result.preload - (1 - c) * result.load;
  result.preloadStress = result.preload / area;
  result.serviceStress = result.boltForce / area;
  result.yielding = proofLoad / result.boltForce;
  result.overload = Quotient(proofLoad - result.preload, c * result.load);
  result.separation = Quotient(result.preload, (1 - c) * result.load);
}

BoltedJointResult CalculateBoltedJoint(const BoltedJointInput& input) {
  BoltedJointResult result;
  result.stressArea = StressArea(input);
  result.shankArea = kPi / 4 * input.diameter * input.diameter;
  FindLength(input, result);
  result.boltStiffness = BoltStiffness(input, result);
  result.partStiffness = PartStiffness(input, result.grip);
  LoadBoltedJoint(input, result);
  CheckHolds(input, result);
  return result;
}

}  // namespace hexaplan
