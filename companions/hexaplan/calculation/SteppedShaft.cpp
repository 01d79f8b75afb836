#include "hexaplan/calculation/SteppedShaft.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;

// Pieces into which the stretch between two places of change is cut to look for extremes.
constexpr int kPieces = 16;

// A point force or moment in one plane; moments in Nmm.
struct PlaneLoad {
  double x;
  double force;
  double moment;
};

struct Plane {
  std::vector<PlaneLoad> loads;  // the reactions included
  double reaction[2] = {};
};

Plane Balance(std::vector<PlaneLoad> loads, const double (&support)[2]) {
  double force = 0.0;
  double moment = 0.0;
  for (const PlaneLoad& load : loads) {
    force += load.force;
    moment += load.force * (support[0] - load.x) + load.moment;
  }
  Plane plane;
  plane.reaction[1] = moment / (support[1] - support[0]);
  plane.reaction[0] = -force - plane.reaction[1];
  for (int j = 0; j < 2; ++j) loads.push_back({support[j], plane.reaction[j], 0.0});
  plane.loads = std::move(loads);
  return plane;
}

// The bending moment, in Nmm, of everything that stands left of `x`; with `inclusive` also of what
// stands at x itself.
double MomentAt(const Plane& plane, double x, bool inclusive) {
  double moment = 0.0;
  for (const PlaneLoad& load : plane.loads) {
    if (load.x < x || (inclusive && load.x == x)) moment += load.force * (x - load.x) + load.moment;
  }
  return moment;
}

double LeftOf(const std::vector<std::pair<double, double>>& jumps, double x, bool inclusive) {
  double sum = 0.0;
  for (const auto& [place, jump] : jumps) {
    if (place < x || (inclusive && place == x)) sum += jump;
  }
  return sum;
}

void CheckPlaces(const ShaftInput& input, double length) {
  for (int j = 0; j < 2; ++j) {
    if (input.support[j] < 0.0 || input.support[j] > length) {
      throw InputError("PX_" + std::to_string(j), "the bearing lies outside the shaft, which is " +
                                                      NumberText(length) + " mm long.");
    }
  }
  if (input.support[1] - input.support[0] < 0.01 * length) {
    throw InputError("PX_1",
                     "the second bearing must stand to the right of the first, at least a "
                     "hundredth of the length apart.");
  }
  double torque = 0.0;
  double largest = 0.0;
  for (std::size_t k = 0; k < input.loads.size(); ++k) {
    const ShaftLoad& load = input.loads[k];
    if (load.x < 0.0 || load.x > length) {
      throw InputError("ZX_" + std::to_string(k), "the load lies outside the shaft, which is " +
                                                      NumberText(length) + " mm long.");
    }
    torque += load.torque;
    largest = std::max(largest, std::fabs(load.torque));
  }
  // A hundredth: users enter rounded torques.
  if (std::fabs(torque) > 0.01 * largest) {
    throw InputError("ZM0", "the torques of all loads must add up to 0; they give " +
                                NumberText(torque) + " Nm.");
  }
}

// Right ends of the sections.
std::vector<double> SectionEnds(const std::vector<ShaftSection>& sections) {
  std::vector<double> ends;
  double x = 0.0;
  for (const ShaftSection& section : sections) ends.push_back(x += section.length);
  return ends;
}

// Places where something changes, and places between them.
std::vector<double> Places(const ShaftInput& input, const std::vector<double>& ends) {
  std::vector<double> places(ends);
  places.push_back(0.0);
  for (double support : input.support) places.push_back(support);
  for (const ShaftLoad& load : input.loads) places.push_back(load.x);
  for (const Notch& notch : input.notches) {
    places.push_back(notch.begin);
    places.push_back(notch.end);
  }
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  std::vector<double> fine;
  for (std::size_t i = 0; i + 1 < places.size(); ++i) {
    for (int piece = 0; piece < kPieces; ++piece) {
      fine.push_back(places[i] + (places[i + 1] - places[i]) * piece / kPieces);
    }
  }
  fine.push_back(places.back());
  return fine;
}

double AreaMoment(double diameter) { return kPi / 64.0 * std::pow(diameter, 4); }

double DiameterAt(const ShaftSection& section, double x) {
  return section.diameter + (section.EndDiameter() - section.diameter) * x / section.length;
}

// Gauss's rule with three points: exact where the diameter stays, and close where it does not.
struct GaussPoint {
  double place, weight;  // of a stretch of 1
};
constexpr GaussPoint kGauss[] = {
    {0.1127016653792583, 5.0 / 18}, {0.5, 4.0 / 9}, {0.8872983346207417, 5.0 / 18}};

// How the line bends from one end of a piece to the other.
void Bend(const ShaftState& start, const ShaftState& end, double elasticity, double (&slope)[2],
          double (&deflection)[2]) {
  const double h = end.x - start.x;
  const double from[2] = {start.momentY * 1000.0, start.momentZ * 1000.0};
  const double to[2] = {end.momentY * 1000.0, end.momentZ * 1000.0};
  for (int p = 0; p < 2; ++p) {
    deflection[p] += slope[p] * h;
    for (const GaussPoint& point : kGauss) {
      const double diameter = start.diameter + (end.diameter - start.diameter) * point.place;
      const double curvature =
          (from[p] + (to[p] - from[p]) * point.place) / (elasticity * AreaMoment(diameter));
      deflection[p] += point.weight * curvature * (1.0 - point.place) * h * h;
      slope[p] += point.weight * curvature * h;
    }
  }
}

// Forces and moments in both ends of every piece, and slopes and deflections up to a straight line.
std::vector<ShaftState> WalkAlong(const ShaftInput& input, const Plane& y, const Plane& z,
                                  double reactionX) {
  const auto ends = SectionEnds(input.sections);
  const auto places = Places(input, ends);
  std::vector<std::pair<double, double>> torques;
  std::vector<std::pair<double, double>> pulls{{input.support[input.axialSupport], reactionX}};
  for (const ShaftLoad& load : input.loads) {
    torques.emplace_back(load.x, load.torque);
    pulls.emplace_back(load.x, load.forceX);
  }
  std::vector<ShaftState> line;
  double slope[2] = {0, 0};
  double deflection[2] = {0, 0};
  std::size_t section = 0;
  for (std::size_t i = 0; i + 1 < places.size(); ++i) {
    const double a = places[i];
    const double b = places[i + 1];
    while (section + 1 < ends.size() && a >= ends[section]) ++section;
    const double begin = ends[section] - input.sections[section].length;
    for (const bool left : {true, false}) {
      ShaftState state;
      state.x = left ? a : b;
      state.diameter = DiameterAt(input.sections[section], state.x - begin);
      state.momentY = MomentAt(y, state.x, left) / 1000.0;
      state.momentZ = MomentAt(z, state.x, left) / 1000.0;
      state.torque = -LeftOf(torques, state.x, left);
      state.axialForce = -LeftOf(pulls, state.x, left);
      if (!left) Bend(line.back(), state, input.elasticity, slope, deflection);
      state.slopeY = slope[0];
      state.slopeZ = slope[1];
      state.deflectionY = deflection[0];
      state.deflectionZ = deflection[1];
      line.push_back(state);
    }
  }
  return line;
}

const ShaftState& StateAt(const std::vector<ShaftState>& line, double x) {
  const auto found =
      std::find_if(line.begin(), line.end(), [x](const ShaftState& state) { return state.x >= x; });
  return found != line.end() ? *found : line.back();
}

// Turns the line so that it goes through both bearings.
void LayIntoBearings(std::vector<ShaftState>& line, const double (&support)[2]) {
  const ShaftState first = StateAt(line, support[0]);
  const ShaftState second = StateAt(line, support[1]);
  const double span = support[1] - support[0];
  const double turnY = (second.deflectionY - first.deflectionY) / span;
  const double turnZ = (second.deflectionZ - first.deflectionZ) / span;
  for (ShaftState& state : line) {
    state.deflectionY -= first.deflectionY + turnY * (state.x - support[0]);
    state.deflectionZ -= first.deflectionZ + turnZ * (state.x - support[0]);
    state.slopeY -= turnY;
    state.slopeZ -= turnZ;
  }
}

void WeighSections(const ShaftInput& input, ShaftResult& result) {
  double moment = 0.0;
  for (const ShaftSection& section : input.sections) {
    const double a = section.diameter;
    const double b = section.EndDiameter();
    const double squares = a * a + a * b + b * b;
    const double mass = kPi / 12.0 * squares * section.length * 1e-9 * input.density;
    const double centre = (a * a + 2.0 * a * b + 3.0 * b * b) / (4.0 * squares);
    moment += mass * (result.length + section.length * centre);
    result.mass += mass;
    result.length += section.length;
  }
  result.centreOfMass = moment / result.mass;
}

// Stresses of a state in a section of this diameter, without notch factors, in MPa.
struct Stresses {
  double bending, torsion, equivalent;
};

double MomentOf(const ShaftState& state) { return std::hypot(state.momentY, state.momentZ); }

Stresses StressesOf(const ShaftState& state, double diameter) {
  const double modulus = kPi / 32.0 * std::pow(diameter, 3);
  const double bending = MomentOf(state) * 1000.0 / modulus;
  const double direct = std::fabs(state.axialForce) / (kPi / 4.0 * diameter * diameter);
  const double torsion = std::fabs(state.torque) * 1000.0 / (2.0 * modulus);
  return {bending, torsion, std::hypot(bending + direct, std::sqrt(3.0) * torsion)};
}

// Keeps the larger value and where it is.
void Keep(double& largest, double& at, double value, double x) {
  if (value <= largest) return;
  largest = value;
  at = x;
}

void KeepStresses(ShaftResult& result, const ShaftState& state, double diameter) {
  const Stresses stresses = StressesOf(state, diameter);
  result.maxBending = std::max(result.maxBending, stresses.bending);
  result.maxTorsion = std::max(result.maxTorsion, stresses.torsion);
  Keep(result.maxEquivalent, result.maxEquivalentAt, stresses.equivalent, state.x);
}

void FindExtremes(ShaftResult& result) {
  for (const ShaftState& state : result.line) {
    Keep(result.maxMoment, result.maxMomentAt, MomentOf(state), state.x);
    Keep(result.maxDeflection, result.maxDeflectionAt,
         std::hypot(state.deflectionY, state.deflectionZ), state.x);
    result.maxTorque = std::max(result.maxTorque, std::fabs(state.torque));
    KeepStresses(result, state, state.diameter);
  }
}

FatigueLoad FatigueLoadOf(const ShaftState& state, const ShaftFatigue& fatigue) {
  const double moment = MomentOf(state);
  const double torque = std::fabs(state.torque);
  FatigueLoad load;
  (fatigue.rotates ? load.bendingAmplitude : load.bendingMean) = moment;
  load.torqueAmplitude = torque * fatigue.alternatingTorque;
  load.torqueMean = torque - load.torqueAmplitude;
  load.axialMean = std::fabs(state.axialForce);
  return load;
}

void CalculateNotches(const ShaftInput& input, ShaftResult& result) {
  const ShaftFatigue& fatigue = input.fatigue;
  const double strength = fatigue.tensileStrength;
  if (strength <= 0.0) return;
  result.surfaceFactor = SurfaceFactor(fatigue.surface, strength);
  result.reliabilityFactor = ReliabilityFactor(fatigue.reliability);
  for (const Notch& notch : input.notches) {
    NotchResult worst;
    worst.x = notch.begin;
    worst.theoretical = notch.factors;
    worst.fatigue =
        notch.radius > 0.0 ? FatigueNotch(notch.factors, notch.radius, strength) : notch.factors;
    worst.endurance = result.surfaceFactor * SizeFactor(notch.diameter) * result.reliabilityFactor *
                      TestBarEndurance(strength);
    for (const ShaftState& state : result.line) {
      if (state.x < notch.begin || state.x > notch.end) continue;
      KeepStresses(result, state, notch.diameter);
      Keep(worst.use, worst.x,
           FatigueUse(FatigueLoadOf(state, fatigue), notch.diameter, worst.fatigue, worst.endurance,
                      strength),
           state.x);
    }
    result.notches.push_back(worst);
  }
}

double Twist(const std::vector<ShaftState>& line, double shearModulus) {
  double angle = 0.0;
  for (std::size_t i = 0; i + 1 < line.size(); i += 2) {
    const double length = line[i + 1].x - line[i].x;
    for (const GaussPoint& point : kGauss) {
      const double diameter =
          line[i].diameter + (line[i + 1].diameter - line[i].diameter) * point.place;
      angle += point.weight * line[i].torque * 1000.0 * length /
               (shearModulus * 2.0 * AreaMoment(diameter));
    }
  }
  return angle * 180.0 / kPi;
}

}  // namespace

ShaftResult CalculateShaft(const ShaftInput& input) {
  ShaftResult result;
  WeighSections(input, result);
  CheckPlaces(input, result.length);

  std::vector<PlaneLoad> loadsY;
  std::vector<PlaneLoad> loadsZ;
  for (const ShaftLoad& load : input.loads) {
    loadsY.push_back({load.x, load.forceY, load.bendingY * 1000.0});
    loadsZ.push_back({load.x, load.forceZ, load.bendingZ * 1000.0});
    result.reactionX -= load.forceX;
  }
  const Plane y = Balance(std::move(loadsY), input.support);
  const Plane z = Balance(std::move(loadsZ), input.support);
  for (int j = 0; j < 2; ++j) {
    result.reactionY[j] = y.reaction[j];
    result.reactionZ[j] = z.reaction[j];
  }
  result.line = WalkAlong(input, y, z, result.reactionX);
  LayIntoBearings(result.line, input.support);
  FindExtremes(result);
  CalculateNotches(input, result);
  for (int j = 0; j < 2; ++j) {
    const ShaftState& state = StateAt(result.line, input.support[j]);
    result.supportSlope[j] = std::hypot(state.slopeY, state.slopeZ);
  }
  result.twist = Twist(result.line, input.shearModulus);
  return result;
}

}  // namespace hexaplan
