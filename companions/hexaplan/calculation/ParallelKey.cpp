#include "hexaplan/calculation/ParallelKey.h"

#include <algorithm>
#include <cmath>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

namespace {

constexpr double kInch = 25.4;  // mm

// Of the yield strength, by the distortion energy.
constexpr double kShearYield = 0.577;
// Of the keyway in the hub over an inch key.
constexpr double kInchClearance = 0.005 * kInch;
// A longer key does not bear evenly when the shaft is twisted.
constexpr double kLongest = 1.5;  // shaft diameters

// For shafts above the row before, up to this diameter.
struct Row {
  double diameter;
  KeySection section;
};

constexpr Row kMetricRows[] = {
    {6, {}},
    {8, {2, 2, 1.2, 1}},
    {10, {3, 3, 1.8, 1.4}},
    {12, {4, 4, 2.5, 1.8}},
    {17, {5, 5, 3, 2.3}},
    {22, {6, 6, 3.5, 2.8}},
    {30, {8, 7, 4, 3.3}},
    {38, {10, 8, 5, 3.3}},
    {44, {12, 8, 5, 3.3}},
    {50, {14, 9, 5.5, 3.8}},
    {58, {16, 10, 6, 4.3}},
    {65, {18, 11, 7, 4.4}},
    {75, {20, 12, 7.5, 4.9}},
    {85, {22, 14, 9, 5.4}},
    {95, {25, 14, 9, 5.4}},
    {110, {28, 16, 10, 6.4}},
    {130, {32, 18, 11, 7.4}},
    {150, {36, 20, 12, 8.4}},
    {170, {40, 22, 13, 9.4}},
    {200, {45, 25, 15, 10.4}},
};

struct InchRow {
  double diameter;  // in
  double side;      // in, of the square
};

constexpr InchRow kInchRows[] = {
    {0.3125, 0},     {0.4375, 0.09375}, {0.5625, 0.125}, {0.875, 0.1875}, {1.25, 0.25},
    {1.375, 0.3125}, {1.75, 0.375},     {2.25, 0.5},     {2.75, 0.625},   {3.25, 0.75},
};

}  // namespace

KeySection StandardKeyOf(double shaftDiameter, bool inch) {
  if (inch) {
    for (const InchRow& row : kInchRows) {
      const double side = row.side * kInch;
      if (shaftDiameter <= row.diameter * kInch)
        return {side, side, side / 2, side / 2 + kInchClearance};
    }
    return {};
  }
  for (const Row& row : kMetricRows) {
    if (shaftDiameter <= row.diameter) return row.section;
  }
  return {};
}

KeyResult CalculateKey(const KeyInput& input) {
  const KeySection& key = input.section;
  if (key.shaftDepth >= key.height || key.shaftDepth >= input.shaftDiameter / 2) {
    throw InputError("t1", "the keyway is deeper than the key or the shaft allows.");
  }
  KeyResult result;
  result.force = input.torque * 1000 / (input.shaftDiameter / 2);
  const double needed = result.force * input.safety / input.yieldStrength;  // mm2
  result.shearLength = needed / (kShearYield * key.width);
  result.crushLength = needed / (key.height / 2);
  const double ends = input.roundEnds ? key.width : 0.0;
  const double least = std::max(result.shearLength, result.crushLength) + ends;
  const double shortest = std::ceil(least / input.lengthStep - 1e-9) * input.lengthStep;
  result.length = input.length > 0 ? input.length : shortest;
  if (result.length < least) {
    throw InputError("l", "the key must be at least " + NumberText(least) +
                              " mm long for this torque and safety.");
  }
  if (result.length > kLongest * input.shaftDiameter) {
    throw InputError("T", "the key would be " + NumberText(result.length) +
                              " mm long, more than 1.5 shaft diameters; take a thicker shaft or "
                              "two keys.");
  }
  result.bearingLength = result.length - ends;
  result.shear = result.force / (key.width * result.bearingLength);
  result.pressure = result.force / (key.height / 2 * result.bearingLength);
  result.shearSafety = kShearYield * input.yieldStrength / result.shear;
  result.crushSafety = input.yieldStrength / result.pressure;
  return result;
}

}  // namespace hexaplan
