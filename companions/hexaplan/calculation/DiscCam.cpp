#include "hexaplan/calculation/DiscCam.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180;
constexpr int kSamplesPerDegree = 20;  // where extremes are looked for

// The least wall between bore and profile, in millimetres.
constexpr double kLeastWall = 1;

// The axis' distance of the follower's centre in the lower dwell.
double LowerDistance(const CamInput& input) {
  const double prime = input.baseRadius + input.rollerRadius;
  return std::sqrt(prime * prime - input.offset * input.offset);
}

// Sets the follower's motion.
void Move(const CamInput& input, double degrees, CamState& state) {
  const auto stroke = [&](MotionLaw law, double begin, double angle, double sign) {
    const double turn = angle * kDegree;
    const Motion motion = MotionAt(law, (degrees - begin) / angle);
    state.displacement = input.lift * (sign > 0 ? motion.displacement : 1 - motion.displacement);
    state.slope = sign * input.lift * motion.velocity / turn;
    state.second = sign * input.lift * motion.acceleration / (turn * turn);
  };
  const double returnBegin = input.riseAngle + input.upperDwell;
  if (degrees < input.riseAngle) {
    stroke(input.riseLaw, 0, input.riseAngle, 1);
  } else if (degrees < returnBegin) {
    state.displacement = input.lift;
  } else if (degrees < returnBegin + input.returnAngle) {
    stroke(input.returnLaw, returnBegin, input.returnAngle, -1);
  }
}

CamStroke StrokeOf(const CamInput& input, MotionLaw law, double angle) {
  const double omega = 2 * kPi * input.speed / 60;
  const double rate = omega / (angle * kDegree);  // 1/s
  const double lift = input.lift / 1000;          // m
  const Motion peaks = PeaksOf(law);
  CamStroke stroke;
  stroke.maxVelocity = lift * peaks.velocity * rate;
  stroke.maxAcceleration = lift * peaks.acceleration * rate * rate;
  stroke.maxJerk = lift * peaks.jerk * rate * rate * rate;
  return stroke;
}

void FindExtremes(const CamInput& input, CamResult& result) {
  result.minPitchRadius = std::numeric_limits<double>::infinity();
  for (int i = 0; i < 360 * kSamplesPerDegree; ++i) {
    const double degrees = static_cast<double>(i) / kSamplesPerDegree;
    const CamState state = CamStateAt(input, degrees);
    CamStroke& stroke = degrees < input.riseAngle + input.upperDwell ? result.rise : result.fall;
    const double angle = std::abs(state.pressureAngle);
    if (angle > stroke.maxPressureAngle) {
      stroke.maxPressureAngle = angle;
      stroke.maxPressureAngleAt = degrees;
    }
    if (state.pitchRadius > 0 && state.pitchRadius < result.minPitchRadius) {
      result.minPitchRadius = state.pitchRadius;
      result.minPitchRadiusAt = degrees;
    }
    result.maxNormalForce =
        std::max(result.maxNormalForce, input.force / std::cos(angle * kDegree));
    result.maxTorque = std::max(result.maxTorque, input.force * std::abs(state.slope) / 1000);
  }
  result.minProfileRadius = result.minPitchRadius - input.rollerRadius;
}

void MakeProfile(const CamInput& input, CamResult& result) {
  result.profile.reserve(static_cast<std::size_t>(input.points));
  for (int i = 0; i < input.points; ++i) {
    const double degrees = 360.0 * i / input.points;
    const CamState state = CamStateAt(input, degrees);
    result.profile.push_back({degrees + std::atan2(state.across, state.along) / kDegree,
                              std::hypot(state.along, state.across)});
  }
  for (std::size_t i = 0; i < result.profile.size(); ++i) {
    const CamPoint& from = result.profile[i];
    const CamPoint& to = result.profile[(i + 1) % result.profile.size()];
    result.area +=
        from.distance * to.distance * std::sin((to.direction - from.direction) * kDegree) / 2;
  }
  const double bore = kPi / 4 * input.bore * input.bore;
  result.mass = (result.area - bore) * input.width * input.density * 1e-9;
}

void CheckInput(const CamInput& input) {
  if (input.riseAngle + input.upperDwell + input.returnAngle > 360) {
    throw InputError("beta2", "rise, upper dwell and return take more than one turn of the cam.");
  }
  if (std::abs(input.offset) >= input.baseRadius) {
    throw InputError("e", "the follower's axis passes beside the base circle.");
  }
  if (input.bore / 2 + kLeastWall > input.baseRadius) {
    throw InputError("dh", "the bore leaves less than " + NumberText(kLeastWall) +
                               " mm inside the base circle.");
  }
}

void CheckResult(const CamInput& input, const CamResult& result) {
  if (result.minProfileRadius <= 0) {
    throw InputError("rr", "the roller undercuts the profile at " +
                               NumberText(result.minPitchRadiusAt) +
                               " deg: its radius must stay below the pitch curve's, " +
                               NumberText(result.minPitchRadius) +
                               " mm there; make the roller smaller or the base circle larger.");
  }
  for (const CamStroke* stroke : {&result.rise, &result.fall}) {
    if (stroke->maxPressureAngle <= input.pressureAngleLimit) continue;
    throw InputError("phiMax", "the pressure angle reaches " +
                                   NumberText(stroke->maxPressureAngle) + " deg at " +
                                   NumberText(stroke->maxPressureAngleAt) +
                                   " deg; make the base circle or the cam angle larger.");
  }
}

}  // namespace

CamState CamStateAt(const CamInput& input, double degrees) {
  CamState state;
  Move(input, degrees, state);
  // The pitch curve's tangent is (slope - offset) along the follower and `distance` across it.
  const double distance = LowerDistance(input) + state.displacement;
  const double along = state.slope - input.offset;
  const double tangent = std::hypot(along, distance);
  state.pressureAngle = std::atan2(along, distance) / kDegree;
  const double bend =
      along * (2 * state.slope - input.offset) - distance * (state.second - distance);
  state.pitchRadius = tangent * tangent * tangent / bend;
  state.along = distance - input.rollerRadius * distance / tangent;
  state.across = input.offset + input.rollerRadius * along / tangent;
  return state;
}

CamResult CalculateCam(const CamInput& input) {
  CheckInput(input);
  CamResult result;
  result.rise = StrokeOf(input, input.riseLaw, input.riseAngle);
  result.fall = StrokeOf(input, input.returnLaw, input.returnAngle);
  FindExtremes(input, result);
  CheckResult(input, result);
  MakeProfile(input, result);
  return result;
}

}  // namespace hexaplan
