#include "hexaplan/calculation/SpurGearPair.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kPoisson = 0.3;

double Radians(double degrees) { return degrees * kPi / 180.0; }
double Degrees(double radians) { return radians * 180.0 / kPi; }
double Involute(double angle) { return std::tan(angle) - angle; }

// The angle of a given involute, by Newton's method; the start value suits 0 to 60 degrees.
double AngleOfInvolute(double involute) {
  double angle = std::cbrt(3.0 * involute);
  for (int i = 0; i < 50; ++i) {
    const double tangent = std::tan(angle);
    const double step = (tangent - angle - involute) / (tangent * tangent);
    angle -= step;
    if (std::fabs(step) < 1e-14) break;
  }
  return angle;
}

std::string Numbered(const char* name, int gear) { return name + std::to_string(gear + 1); }

// Teeth below this number need a positive shift; a sixth of the theoretical limit is tolerated
// because so slight an undercut does not reach the active flank.
void RefuseUndercut(const GearPairInput& input, int g) {
  const double alpha = Radians(input.pressureAngle);
  const double limit = 2.0 * input.addendum / (std::sin(alpha) * std::sin(alpha));
  const double least = input.addendum * (5.0 / 6.0 - input.gear[g].teeth / limit);
  if (input.gear[g].profileShift < least) {
    throw InputError(Numbered("x", g), "the teeth are undercut; a shift of at least " +
                                           NumberText(std::ceil(least * 1000.0) / 1000.0) +
                                           " is needed.");
  }
}

void CalculateCircles(const GearPairInput& input, GearPairResult& result) {
  const double m = input.module;
  const double alpha = Radians(input.pressureAngle);
  const GearInput* gear = input.gear;
  const int teeth = gear[0].teeth + gear[1].teeth;
  const double shift = gear[0].profileShift + gear[1].profileShift;

  const double involute = Involute(alpha) + 2.0 * shift / teeth * std::tan(alpha);
  if (involute <= 0.0) {
    throw InputError("x1", "with this sum of profile shifts (" + NumberText(shift) +
                               ") the gears cannot mesh without backlash.");
  }
  const double working = AngleOfInvolute(involute);
  result.ratio = static_cast<double>(gear[1].teeth) / gear[0].teeth;
  result.workingPressureAngle = Degrees(working);
  result.referenceCentreDistance = m * teeth / 2.0;
  result.centreDistance = result.referenceCentreDistance * std::cos(alpha) / std::cos(working);

  // Less than or equal to 0: how far the tips must stay back so that the clearance remains.
  const double shortening = (result.centreDistance - result.referenceCentreDistance) / m - shift;
  for (int g = 0; g < 2; ++g) {
    GearResult& out = result.gear[g];
    out.referenceDiameter = m * gear[g].teeth;
    out.baseDiameter = out.referenceDiameter * std::cos(alpha);
    out.workingDiameter = out.baseDiameter / std::cos(working);
    out.tipDiameter =
        out.referenceDiameter + 2.0 * m * (input.addendum + gear[g].profileShift + shortening);
    out.rootDiameter =
        out.referenceDiameter - 2.0 * m * (input.addendum + input.clearance - gear[g].profileShift);
  }
}

void CalculateTeeth(const GearPairInput& input, int g, GearResult& out) {
  const double m = input.module;
  const double alpha = Radians(input.pressureAngle);
  const int z = input.gear[g].teeth;
  const double x = input.gear[g].profileShift;

  if (input.gear[g].bore > 0.0 && input.gear[g].bore > out.rootDiameter - 2.0 * m) {
    throw InputError(Numbered("dh", g),
                     "the bore leaves less than one module of material below "
                     "the teeth (root circle " +
                         NumberText(out.rootDiameter) + " mm).");
  }
  const double corner =
      std::hypot(input.gear[g].bore / 2.0 + input.gear[g].seatDepth, input.gear[g].seatWidth / 2.0);
  if (input.gear[g].seatWidth > 0.0 && corner > out.rootDiameter / 2.0 - m) {
    throw InputError(Numbered("key", g),
                     "the keyway leaves less than one module of material below the teeth.");
  }
  if (out.tipDiameter <= out.baseDiameter) {
    throw InputError(Numbered("x", g), "the tip circle does not reach the involute.");
  }
  const double tip = std::acos(out.baseDiameter / out.tipDiameter);
  out.toothThickness = m * (kPi / 2.0 + 2.0 * x * std::tan(alpha));
  out.tipThickness = out.tipDiameter *
                     (out.toothThickness / out.referenceDiameter + Involute(alpha) - Involute(tip));
  if (out.tipThickness < 0.2 * m) {
    throw InputError(Numbered("x", g), "the teeth are pointed (tip thickness " +
                                           NumberText(out.tipThickness) +
                                           " mm, at least 0.2 modules are needed).");
  }
  // Measured where the tangent touches the flanks near the shifted reference circle.
  const double touch = std::acos(std::clamp(z * std::cos(alpha) / (z + 2.0 * x), 0.0, 1.0));
  const double span =
      z / kPi * (std::tan(touch) - 2.0 * x / z * std::tan(alpha) - Involute(alpha)) + 0.5;
  out.spanTeeth = std::max(1, static_cast<int>(std::lround(span)));
  out.baseTangentLength =
      m * std::cos(alpha) * (kPi * (out.spanTeeth - 0.5) + z * Involute(alpha)) +
      2.0 * x * m * std::sin(alpha);
}

// Length of the flank from the base circle to the tip, seen along the line of action.
double TipLength(const GearResult& gear) {
  return std::sqrt(gear.tipDiameter * gear.tipDiameter - gear.baseDiameter * gear.baseDiameter) /
         2.0;
}

void CalculateContact(const GearPairInput& input, GearPairResult& result) {
  const double working = Radians(result.workingPressureAngle);
  const double basePitch = kPi * input.module * std::cos(Radians(input.pressureAngle));
  const double line = result.centreDistance * std::sin(working);
  const double tip[2] = {TipLength(result.gear[0]), TipLength(result.gear[1])};
  for (int g = 0; g < 2; ++g) {
    if (tip[g] > line) {
      throw InputError(Numbered("x", g),
                       "the tip reaches below the base circle of the other gear.");
    }
  }
  result.contactRatio = (tip[0] + tip[1] - line) / basePitch;
  if (result.contactRatio < 1.1) {
    throw InputError("x1", "the contact ratio is only " + NumberText(result.contactRatio) +
                               "; at least 1.1 is needed.");
  }
}

void CalculateForces(const GearPairInput& input, GearPairResult& result) {
  const double working = Radians(result.workingPressureAngle);
  GearResult* gear = result.gear;
  gear[0].speed = input.speed;
  gear[1].speed = input.speed / result.ratio;
  gear[0].torque = 30000.0 * input.power / (kPi * input.speed);
  gear[1].torque = gear[0].torque * result.ratio;
  result.velocity = kPi * gear[0].referenceDiameter * input.speed / 60000.0;
  result.tangentialForce = 2000.0 * gear[0].torque / gear[0].workingDiameter;
  result.radialForce = result.tangentialForce * std::tan(working);
  result.normalForce = result.tangentialForce / std::cos(working);
}

// K1 of ISO 6336-1, method C, spur gears, accuracy grades 3 to 12.
constexpr double kGradeFactors[] = {2.1, 3.9, 7.5, 14.9, 26.8, 39.1, 52.8, 76.6, 102.6, 146.3};

double DynamicFactor(const GearPairInput& input, const GearPairResult& result, double lineLoad) {
  const double u = result.ratio;
  const double reduced =
      input.gear[0].teeth * result.velocity / 100.0 * std::sqrt(u * u / (1.0 + u * u));
  if (reduced > 10.0) {
    throw InputError("n1", "the gears run near or above their resonance (v z1/100 is " +
                               NumberText(reduced) + " m/s, 10 m/s is the limit).");
  }
  const double k1 = kGradeFactors[input.accuracyGrade - 3];
  const double k3 = reduced <= 0.2 ? 2.0 : std::max(0.0, 2.071 - 0.357 * reduced);
  // Loads below 100 N/mm count as 100: the formula would grow without limit.
  const double load = std::max(100.0, input.applicationFactor * lineLoad);
  return 1.0 + (k1 / load + 0.0193) * reduced * k3;
}

void CalculateStresses(const GearPairInput& input, GearPairResult& result) {
  const double m = input.module;
  const double b = input.faceWidth;
  GearResult* gear = result.gear;
  const double force = 2000.0 * gear[0].torque / gear[0].referenceDiameter;
  const double lineLoad = force / b;

  result.dynamicFactor = DynamicFactor(input, result, lineLoad);
  const double slenderness = b / (std::max(gear[0].tipDiameter - gear[0].rootDiameter,
                                           gear[1].tipDiameter - gear[1].rootDiameter) /
                                  2.0);
  const double exponent =
      slenderness * slenderness / (1.0 + slenderness + slenderness * slenderness);
  result.rootFaceLoadFactor = std::pow(input.faceLoadFactor, exponent);

  const double common = input.applicationFactor * result.dynamicFactor;
  const double epsilon = result.contactRatio;
  result.rootContactFactor = 0.25 + 0.75 / epsilon;
  for (int g = 0; g < 2; ++g) {
    const auto factors = RootFactorsOf(input.gear[g].teeth, input.gear[g].profileShift,
                                       gear[g].tipDiameter / m, input);
    gear[g].formFactor = factors.form;
    gear[g].stressCorrection = factors.stressCorrection;
    gear[g].rootStress = lineLoad / m * factors.form * factors.stressCorrection *
                         result.rootContactFactor * common * result.rootFaceLoadFactor;
    // YST = 2: the endurance limit belongs to a test gear, whose own stress correction is 2.
    gear[g].rootSafety = 2.0 * input.gear[g].material->rootEndurance / gear[g].rootStress;
  }

  const double alpha = Radians(input.pressureAngle);
  const double working = Radians(result.workingPressureAngle);
  const double u = result.ratio;
  result.zoneFactor =
      std::sqrt(2.0 * std::cos(working) / (std::cos(alpha) * std::cos(alpha) * std::sin(working)));
  double compliance = 0.0;
  for (const GearInput& each : input.gear) {
    compliance += (1.0 - kPoisson * kPoisson) / each.material->elasticity;
  }
  result.elasticityFactor = std::sqrt(1.0 / (kPi * compliance));
  result.flankContactFactor = std::sqrt((4.0 - epsilon) / 3.0);
  result.pitchPressure = result.zoneFactor * result.elasticityFactor *
                         std::sqrt(lineLoad / gear[0].referenceDiameter * (u + 1.0) / u);
  double tip[2];
  double pitch[2];
  for (int g = 0; g < 2; ++g) {
    tip[g] = 2.0 * TipLength(gear[g]) / gear[g].baseDiameter;
    pitch[g] = 2.0 * kPi / input.gear[g].teeth;
  }
  const double tangent = std::tan(working);
  for (int g = 0; g < 2; ++g) {
    const int other = 1 - g;
    const double inner =
        tangent / std::sqrt((tip[g] - pitch[g]) * (tip[other] - (epsilon - 1.0) * pitch[other]));
    gear[g].innerContact = std::max(1.0, inner);
    gear[g].flankStress = gear[g].innerContact * result.flankContactFactor * result.pitchPressure *
                          std::sqrt(common * input.faceLoadFactor);
    gear[g].flankSafety = input.gear[g].material->contactEndurance / gear[g].flankStress;
  }
}

}  // namespace

RootFactors RootFactorsOf(int teeth, double profileShift, double tipDiameterInModules,
                          const GearPairInput& rack) {
  const double alpha = Radians(rack.pressureAngle);
  const double z = teeth;
  const double dedendum = rack.addendum + rack.clearance;
  const double fillet = rack.filletRadius;

  const double e =
      kPi / 4.0 - dedendum * std::tan(alpha) - (1.0 - std::sin(alpha)) * fillet / std::cos(alpha);
  const double g = fillet - dedendum + profileShift;
  const double h = 2.0 / z * (kPi / 2.0 - e) - kPi / 3.0;
  double theta = kPi / 6.0;
  for (int i = 0; i < 100; ++i) {
    const double next = 2.0 * g / z * std::tan(theta) - h;
    const bool settled = std::fabs(next - theta) < 1e-13;
    theta = next;
    if (settled) break;
  }
  const double chord =
      z * std::sin(kPi / 3.0 - theta) + std::sqrt(3.0) * (g / std::cos(theta) - fillet);
  const double radius =
      fillet + 2.0 * g * g / (std::cos(theta) * (z * std::cos(theta) * std::cos(theta) - 2.0 * g));

  const double tip = std::acos(z * std::cos(alpha) / tipDiameterInModules);
  const double half =
      (kPi / 2.0 + 2.0 * profileShift * std::tan(alpha)) / z + Involute(alpha) - Involute(tip);
  const double load = tip - half;
  const double lever =
      0.5 * ((std::cos(half) - std::sin(half) * std::tan(load)) * tipDiameterInModules -
             z * std::cos(kPi / 3.0 - theta) - g / std::cos(theta) + fillet);
  RootFactors factors;
  factors.form = 6.0 * lever * std::cos(load) / (chord * chord * std::cos(alpha));
  const double l = chord / lever;
  const double q = chord / (2.0 * radius);
  factors.stressCorrection = (1.2 + 0.13 * l) * std::pow(q, 1.0 / (1.21 + 2.3 / l));
  return factors;
}

GearPairResult CalculateGearPair(const GearPairInput& input) {
  GearPairResult result;
  for (int g = 0; g < 2; ++g) RefuseUndercut(input, g);
  CalculateCircles(input, result);
  for (int g = 0; g < 2; ++g) CalculateTeeth(input, g, result.gear[g]);
  CalculateContact(input, result);
  CalculateForces(input, result);
  CalculateStresses(input, result);
  for (int g = 0; g < 2; ++g) {
    GearResult& gear = result.gear[g];
    const double area =
        kPi / 4.0 *
        (gear.referenceDiameter * gear.referenceDiameter - input.gear[g].bore * input.gear[g].bore);
    gear.mass = area * input.faceWidth * 1e-9 * input.gear[g].material->density;
  }
  return result;
}

}  // namespace hexaplan
