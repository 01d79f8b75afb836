#include "drawboard/Design.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "drawboard/BoardError.h"
#include "drawboard/Numbers.h"

namespace drawboard {
namespace {

constexpr double kPi = std::numbers::pi;

// Steel, where the part's parameters give no density.
constexpr double kSteelDensity = 7850;             // kg/m3
constexpr double kCubicMillimetresPerMetre = 1e9;  // kg/m3 -> kg/mm3
constexpr double kKilogramsPerPound = 0.45359237;
constexpr int kMostTeeth = 2000;
// Checking an outline takes time that grows with the square of its edges: with more teeth, which
// are then small on the wheel, it stays the cylinder of its reference circle.
constexpr int kMostCutTeeth = 300;
// Across flats of the hexagon that has the area of a circle, in diameters: sqrt(pi / (2 sqrt(3))).
constexpr double kFlatsPerCircle = 0.9523128;
// Hub keyways are cut this much deeper than the key stands out of the shaft (DIN 6885).
constexpr double kKeyClearance = 0.3;
// A point chamfer takes away the thread, which is about this part of its diameter deep.
constexpr double kThreadDepth = 0.08;
// More points do not make a splined profile truer, only its files larger.
constexpr std::size_t kMostCamPoints = 720;

// Beyond it the modeller's tolerances mean nothing.
constexpr double kLargest = 1e6;  // mm
// Points of a profile closer than this are one.
constexpr double kClosest = 1e-5;  // mm

std::string Text(double value) { return FormatNumber(value); }

bool IsOn(const NamedTexts& states, const char* feature) {
  const std::string* state = FindText(states, feature);
  return state != nullptr && *state == "1";
}

// ---- gears

// A keyway that stands on the gear as a feature, or one that the gear's own parameters name.
void ReadHubSeat(const PartDescription& part, double scale, GearDesign& gear) {
  const Numbers own(part.parameters);
  gear.seatWidth = own.Or("bk", 0) * scale;
  gear.seatDepth = own.Or("tk2", 0) * scale;
  for (const PartDescription& feature : part.features) {
    if (feature.model != "keyway") continue;
    const Numbers numbers(feature.parameters);
    gear.seatWidth = numbers.Or("bk", 0) * scale;
    gear.seatDepth = (numbers.Or("hk", 0) - numbers.Or("tk", 0)) * scale + kKeyClearance;
  }
  if (gear.seatWidth == 0) {
    gear.seatDepth = 0;
    return;
  }
  Demand(gear.boreRadius > 0, "The gear has a keyway but no bore");
  Demand(gear.seatWidth > 0 && gear.seatWidth < 2 * gear.boreRadius && gear.seatDepth > 0,
         "The keyway does not fit into the bore of the gear");
}

void CheckGear(const GearDesign& gear, double scale) {
  Demand(gear.width > 0, "The width of the gear is not above 0");
  DemandSize({gear.width, gear.tipRadius});
  Demand(gear.rootRadius > 0 && gear.tipRadius > gear.rootRadius,
         "The teeth have no height: root circle " + Text(2 * gear.rootRadius / scale) +
             ", tip circle " + Text(2 * gear.tipRadius / scale));
  Demand(gear.tipRadius > gear.baseRadius, "The tip circle does not reach the involute");
  const double tipAngle = gear.toothAngle + Involute(gear.pressureAngle) -
                          Involute(std::acos(gear.baseRadius / gear.tipRadius));
  Demand(tipAngle > 0, "The flanks of the teeth meet below the tip circle");
  const double rootAngle =
      gear.toothAngle + Involute(gear.pressureAngle) -
      (gear.rootRadius > gear.baseRadius ? Involute(std::acos(gear.baseRadius / gear.rootRadius))
                                         : 0);
  Demand(rootAngle < kPi / gear.teeth, "The teeth leave no gap between them at the root");
  Demand(gear.boreRadius >= 0 &&
             std::hypot(gear.boreRadius + gear.seatDepth, gear.seatWidth / 2) < gear.rootRadius,
         "The bore of the gear cuts its teeth");
}

Design ReadGear(const PartDescription& part, double scale) {
  const Numbers numbers(part.parameters);
  if (!numbers.Of("z") && !numbers.Of("m")) return {};
  const double teeth = numbers.Or("z", 0);
  const double module = numbers.Or("m", 0) * scale;
  const double degrees = numbers.Or("alfa", 20);
  Demand(teeth >= 3 && teeth <= kMostTeeth && teeth == std::floor(teeth),
         "A gear cannot have " + Text(teeth) + " teeth");
  Demand(module > 0, "The module of the gear is not above 0");
  Demand(degrees > 5 && degrees < 45, "A pressure angle of " + Text(degrees) + " is not built");

  const double shift = numbers.Or("x", 0);
  const double addendum = numbers.Or("ha*", 1);
  GearDesign gear;
  gear.teeth = static_cast<int>(teeth);
  gear.module = module;
  gear.pressureAngle = degrees * kPi / 180;
  gear.toothAngle = (kPi / 2 + 2 * shift * std::tan(gear.pressureAngle)) / teeth;
  const double reference = module * teeth;
  const double tip = reference + 2 * module * (addendum + shift);
  const double root = reference - 2 * module * (addendum + numbers.Or("c*", 0.25) - shift);
  gear.baseRadius = reference / 2 * std::cos(gear.pressureAngle);
  gear.tipRadius = numbers.Or("da", tip / scale) * scale / 2;
  gear.rootRadius = numbers.Or("df", root / scale) * scale / 2;
  gear.filletRadius = std::max(0.05, numbers.Or("rf*", 0.38)) * module;
  gear.width = numbers.Or("b", 0) * scale;
  gear.boreRadius = numbers.Or("dh", 0) * scale / 2;
  ReadHubSeat(part, scale, gear);
  CheckGear(gear, scale);
  if (gear.teeth <= kMostCutTeeth) return gear;
  return TurnedDesign{{{0, reference / 2}, {gear.width, reference / 2}}, gear.boreRadius, {}};
}

// ---- cams

double DistanceToLine(const Point& a, const Point& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double along = -(a.x * dx + a.y * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(a.x + t * dx, a.y + t * dy);
}

bool AreOne(const Point& a, const Point& b) { return std::hypot(a.x - b.x, a.y - b.y) < kClosest; }

// The points that the solid goes through: not more than needed, none twice.
std::vector<Point> PointsOf(const Profile& profile, double scale) {
  const std::size_t count = profile.first.size();
  const std::size_t step = (count + kMostCamPoints - 1) / kMostCamPoints;
  std::vector<Point> points;
  for (std::size_t i = 0; i < count; i += std::max<std::size_t>(step, 1)) {
    const Point point{profile.first[i] * scale, profile.second[i] * scale};
    DemandSize({std::abs(point.x), std::abs(point.y)});
    if (points.empty() || !AreOne(points.back(), point)) points.push_back(point);
  }
  while (points.size() > 1 && AreOne(points.front(), points.back())) points.pop_back();
  return points;
}

Design ReadCam(const PartDescription& part, double scale) {
  const auto profile = ProfileOf(part);
  if (!profile) return {};
  const Numbers numbers(part.parameters);
  CamDesign cam;
  cam.profile = PointsOf(*profile, scale);
  cam.width = numbers.Or("b", kDefaultCamWidth) * scale;
  cam.boreRadius = std::max(0.0, numbers.Or("dh", 0)) * scale / 2;
  Demand(cam.width > 0, "The width of the cam is not above 0");
  DemandSize({cam.width});
  Demand(cam.profile.size() >= 3, "The profile of the cam has fewer than three points");
  if (cam.boreRadius == 0) return cam;
  for (std::size_t i = 0; i < cam.profile.size(); ++i) {
    const Point& next = cam.profile[(i + 1) % cam.profile.size()];
    Demand(DistanceToLine(cam.profile[i], next) > cam.boreRadius,
           "The bore of the cam is larger than its profile");
  }
  return cam;
}

// ---- bolts, nuts, washers

// A bolt's head or a nut: its hexagon. Nothing when neither that nor `other` is given.
std::optional<HexagonDesign> ReadHexagon(const Numbers& numbers, double scale, const char* other) {
  if (!numbers.Of("d_1") && !numbers.Of(other)) return std::nullopt;
  HexagonDesign hexagon;
  hexagon.acrossFlats = numbers.Or("d_1", 0) * scale * kFlatsPerCircle;
  hexagon.height = numbers.Or("l_1", 0) * scale;
  return hexagon;
}

Design ReadBolt(const PartDescription& part, double scale) {
  const Numbers numbers(part.parameters);
  auto bolt = ReadHexagon(numbers, scale, "d_2");
  if (!bolt) return {};
  bolt->shankRadius = numbers.Or("d_2", 0) * scale / 2;
  bolt->shankLength = numbers.Or("l_2", 0) * scale;
  Demand(bolt->height > 0 && bolt->shankRadius > 0 && bolt->shankLength > 0,
         "The bolt needs a head and a shank with a diameter and a length above 0");
  Demand(bolt->acrossFlats > 2 * bolt->shankRadius, "The head of the bolt is not above its shank");
  DemandSize({bolt->acrossFlats, bolt->height, bolt->shankLength});
  if (IsOn(part.featureStates, "PointChamfer")) {
    bolt->pointChamfer = std::min(2 * kThreadDepth * bolt->shankRadius, bolt->shankLength / 2);
  }
  return *bolt;
}

Design ReadNut(const PartDescription& part, double scale) {
  const Numbers numbers(part.parameters);
  auto nut = ReadHexagon(numbers, scale, "dh");
  if (!nut) return {};
  nut->boreRadius = numbers.Or("dh", 0) * scale / 2;
  Demand(nut->height > 0 && nut->boreRadius > 0, "The nut needs a thread and a height above 0");
  Demand(nut->acrossFlats > 2 * nut->boreRadius, "The nut is not larger than its thread");
  DemandSize({nut->acrossFlats, nut->height});
  return *nut;
}

Design ReadWasher(const PartDescription& part, double scale) {
  const Numbers numbers(part.parameters);
  if (!numbers.Of("d_1") && !numbers.Of("dh")) return {};
  const double radius = numbers.Or("d_1", 0) * scale / 2;
  const double thickness = numbers.Or("l_1", 0) * scale;
  TurnedDesign washer;
  washer.boreRadius = numbers.Or("dh", 0) * scale / 2;
  DemandSize({radius, thickness});
  Demand(thickness > 0, "The thickness of the washer is not above 0");
  Demand(washer.boreRadius > 0 && radius > washer.boreRadius,
         "The washer is not larger than its hole");
  const double chamfer = IsOn(part.featureStates, "Chamfer") ? thickness / 4 : 0;
  washer.line = {{0, radius}, {thickness - chamfer, radius}};
  if (chamfer > 0) washer.line.push_back({thickness, radius - chamfer});
  return washer;
}

using Reader = Design (*)(const PartDescription&, double);
constexpr std::pair<const char*, Reader> kReaders[] = {
    {"spurgear", ReadGear}, {"shaft", ReadShaft}, {"disccam", ReadCam},
    {"hexbolt", ReadBolt},  {"hexnut", ReadNut},  {"washer", ReadWasher},
};

}  // namespace

void Demand(bool condition, const std::string& message) {
  if (!condition) throw BoardError(message);
}

void DemandSize(std::initializer_list<double> lengths) {
  Demand(std::max(lengths) <= kLargest, "The part is larger than a kilometre");
}

double Involute(double angle) { return std::tan(angle) - angle; }

Design ReadDesign(const PartDescription& part) {
  if (part.facets) return {};
  const auto found = std::find_if(std::begin(kReaders), std::end(kReaders),
                                  [&](const auto& reader) { return part.model == reader.first; });
  if (found == std::end(kReaders)) return {};
  return found->second(part, part.unit == Unit::Inch ? kMillimetresPerInch : 1);
}

std::optional<Design> PossibleDesign(const PartDescription& part) {
  try {
    return ReadDesign(part);
  } catch (const BoardError&) {
    return std::nullopt;
  }
}

std::optional<Profile> ProfileOf(const PartDescription& part) {
  if (part.profile) return part.profile;
  const Numbers numbers(part.parameters);
  const auto count = static_cast<int>(std::clamp(numbers.Or("cpoint", 0), 0.0, 1e6));
  Profile profile;
  for (int i = 1; i <= count; ++i) {
    const double angle = numbers.OfRow("a", i, 0) * kPi / 180;
    const double length = numbers.OfRow("l", i, 0);
    profile.first.push_back(length * std::sin(angle));
    profile.second.push_back(length * std::cos(angle));
  }
  if (profile.first.empty()) return std::nullopt;
  return profile;
}

double DensityOf(const PartDescription& part) {
  return Numbers(part.parameters).Or("ro", kSteelDensity) / kCubicMillimetresPerMetre;
}

MassProperties InDocumentUnits(MassProperties p, Unit unit) {
  if (unit == Unit::Millimetre) return p;
  const double inch = kMillimetresPerInch;
  for (double* length : {&p.centerX, &p.centerY, &p.centerZ}) *length /= inch;
  p.volume /= inch * inch * inch;
  p.area /= inch * inch;
  p.mass /= kKilogramsPerPound;
  for (double* moment :
       {&p.momentXX, &p.momentYY, &p.momentZZ, &p.momentXY, &p.momentXZ, &p.momentYZ}) {
    *moment /= kKilogramsPerPound * inch * inch;
  }
  return p;
}

}  // namespace drawboard
