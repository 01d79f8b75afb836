// Closed formulas. A toothed wheel counts as the cylinder of its reference diameter (the gaps
// below it and the teeth above it nearly cancel), a shaft as its steps with what is cut into them
// and what stands on them, a cam as the prism of its profile.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawboard/Design.h"
#include "drawboard/FacetBody.h"
#include "drawboard/Kernel.h"
#include "drawboard/Numbers.h"

namespace drawboard {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMostSections = 200;

double ScaleOf(Unit unit) { return unit == Unit::Inch ? kMillimetresPerInch : 1; }

void AddCylinder(TurnedDesign& body, double radius, double length) {
  const double begin = body.line.empty() ? 0 : body.line.back().x;
  body.line.push_back({begin, radius});
  body.line.push_back({begin + length, radius});
}

// The rows "D_1", "L_1", "D_2" ... of a shaft, else one cylinder with the diameter "d".
std::optional<TurnedDesign> PlainBody(const PartDescription& part) {
  const Numbers numbers(part.parameters);
  const double scale = ScaleOf(part.unit);
  TurnedDesign body;
  body.boreRadius = std::max(0.0, numbers.Or("dh", 0)) * scale / 2;
  const auto add = [&](double d, double length) {
    if (d <= 0 || length <= 0) return false;
    AddCylinder(body, d * scale / 2, length * scale);
    return true;
  };
  for (int i = 1; i <= kMostSections; ++i) {
    if (!add(numbers.OfRow("d", i, 0), numbers.OfRow("l", i, 0))) break;
  }
  if (body.line.empty()) add(numbers.Or("d", 0), numbers.Or("b", 0));
  const bool solid = std::all_of(body.line.begin(), body.line.end(), [&](const Station& station) {
    return station.radius > body.boreRadius;
  });
  if (body.line.empty() || !solid) return std::nullopt;
  return body;
}

// The turned body of a part: as its library model has it, or by the names of its parameters.
// Nothing when its dimensions make no body.
std::optional<TurnedDesign> BodyOf(const PartDescription& part) {
  const auto design = PossibleDesign(part);
  if (!design) return std::nullopt;
  if (const auto* turned = std::get_if<TurnedDesign>(&*design)) return *turned;
  return PlainBody(part);
}

double Square(double value) { return value * value; }

double RingArea(double diameter, double bore) {
  return kPi / 4 * (Square(diameter) - Square(bore));
}

// Integrals over a body's volume, and its surface.
struct Sums {
  double volume = 0, area = 0;
  double x = 0, y = 0, z = 0;
  double xx = 0, yy = 0, zz = 0, xy = 0, xz = 0, yz = 0;
};

constexpr int kArcChords = 64;

// The line with chords in place of its arcs.
std::vector<Station> Straight(const std::vector<Station>& line) {
  std::vector<Station> chords;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Station& a = line[i];
    chords.push_back({a.x, a.radius});
    if (a.arc <= 0 || i + 1 == line.size()) continue;
    // A quarter of a circle, its centre nearer to the axis and inside the body.
    const Station& b = line[i + 1];
    const bool rising = b.radius > a.radius;
    const Station centre{rising ? b.x : a.x, rising ? a.radius : b.radius};
    for (int k = 1; k < kArcChords; ++k) {
      const double angle = kPi / 2 * k / kArcChords;
      chords.push_back({centre.x + (rising ? -std::cos(angle) : std::sin(angle)) * a.arc,
                        centre.radius + (rising ? std::sin(angle) : std::cos(angle)) * a.arc});
    }
  }
  return chords;
}

// Between two places of the line; Gauss's rule with three points is exact for a cone.
void AddFrustum(Sums& sums, const Station& a, const Station& b, double sign) {
  constexpr double kPlaces[] = {-0.7745966692414834, 0, 0.7745966692414834};
  constexpr double kWeights[] = {5.0 / 9, 8.0 / 9, 5.0 / 9};
  const double length = b.x - a.x;
  sums.area += kPi * (a.radius + b.radius) * std::hypot(length, b.radius - a.radius);
  for (int i = 0; i < 3; ++i) {
    const double t = (1 + kPlaces[i]) / 2;
    const double x = a.x + t * length;
    const double square = Square(a.radius + t * (b.radius - a.radius));
    const double weight = sign * kWeights[i] / 2 * length * kPi;
    sums.volume += weight * square;
    sums.x += weight * square * x;
    sums.xx += weight * square * x * x;
    sums.yy += weight * square * square / 4;
    sums.zz += weight * square * square / 4;
  }
}

// A slice of a seat across the shaft, at `y` from its axis and `dy` wide.
struct Slice {
  double y, dy, low, high, length;
};

Slice SliceOf(const Seat& seat, double angle, double step) {
  const double half = seat.width / 2;
  Slice slice{half * std::sin(angle), half * std::cos(angle) * step, 0, 0, seat.length};
  if (seat.roundEnds) slice.length += seat.width * (std::cos(angle) - 1);
  const double surface = std::sqrt(std::max(0.0, Square(seat.radius) - Square(slice.y)));
  const double inner = std::max(seat.height, -surface);
  switch (seat.kind) {
    case Seat::Kind::Key:
      slice.low = surface, slice.high = seat.height;
      break;
    case Seat::Kind::Spline:
      slice.low = surface;
      slice.high = std::sqrt(Square(seat.height) - Square(slice.y));
      break;
    default:
      slice.low = std::min(inner, surface), slice.high = surface;
      break;
  }
  return slice;
}

bool IsAdded(const Seat& seat) {
  return seat.kind == Seat::Kind::Key || seat.kind == Seat::Kind::Spline;
}

// How much of a cylinder's surface lies over a unit of the plan.
double Slope(double radius, double y) {
  return radius / std::sqrt(std::max(Square(radius) - Square(y), 1e-12));
}

double AreaChange(const Seat& seat, const Slice& slice, double step) {
  const double plan = slice.length * slice.dy;
  const double surface = plan * Slope(seat.radius, slice.y);
  const double ends = seat.roundEnds ? seat.width * step : 2 * slice.dy;
  double area = -surface + ends * (slice.high - slice.low);
  if (seat.kind == Seat::Kind::Spline) return area + plan * Slope(seat.height, slice.y);
  const bool through = seat.height <= -seat.radius;
  return area + (through ? -surface : plan);
}

Sums SumsOf(const Seat& seat) {
  constexpr int kSlices = 400;
  Sums sums;
  const double step = kPi / kSlices;
  for (int i = 0; i < kSlices; ++i) {
    const double angle = -kPi / 2 + (i + 0.5) * step;
    const Slice s = SliceOf(seat, angle, step);
    const double base = s.length * s.dy;
    const double volume = base * (s.high - s.low);
    const double first = base * (Square(s.high) - Square(s.low)) / 2;
    sums.volume += volume;
    sums.x += volume * seat.middle;
    sums.xx += volume * (Square(seat.middle) + Square(s.length) / 12);
    sums.y += volume * s.y;
    sums.yy += volume * s.y * s.y;
    sums.z += first;
    sums.zz += base * (std::pow(s.high, 3) - std::pow(s.low, 3)) / 3;
    sums.xy += volume * seat.middle * s.y;
    sums.xz += first * seat.middle;
    sums.yz += first * s.y;
    sums.area += AreaChange(seat, s, step);
  }
  // The straight sides of a slot and of a rectangle.
  const Slice side = SliceOf(seat, kPi / 2, step);
  sums.area += 2 * side.length * std::max(0.0, side.high - side.low);
  return sums;
}

// Adds what was summed up in the seat's frame, turned about x to where the seat stands.
void AddTurned(Sums& total, const Sums& s, double turn, double sign) {
  const double c = std::cos(turn), n = std::sin(turn);
  total.volume += sign * s.volume;
  total.area += s.area;
  total.x += sign * s.x;
  total.y += sign * (c * s.y - n * s.z);
  total.z += sign * (n * s.y + c * s.z);
  total.xx += sign * s.xx;
  total.yy += sign * (c * c * s.yy - 2 * c * n * s.yz + n * n * s.zz);
  total.zz += sign * (n * n * s.yy + 2 * c * n * s.yz + c * c * s.zz);
  total.xy += sign * (c * s.xy - n * s.xz);
  total.xz += sign * (n * s.xy + c * s.xz);
  total.yz += sign * (c * n * (s.yy - s.zz) + (c * c - n * n) * s.yz);
}

MassProperties Weigh(const Sums& s, double density) {
  MassProperties p;
  p.volume = s.volume;
  p.area = s.area;
  p.mass = s.volume * density;
  p.centerX = s.x / s.volume;
  p.centerY = s.y / s.volume;
  p.centerZ = s.z / s.volume;
  const double xx = s.xx * density - p.mass * Square(p.centerX);
  const double yy = s.yy * density - p.mass * Square(p.centerY);
  const double zz = s.zz * density - p.mass * Square(p.centerZ);
  p.momentXX = yy + zz;
  p.momentYY = xx + zz;
  p.momentZZ = xx + yy;
  p.momentXY = s.xy * density - p.mass * p.centerX * p.centerY;
  p.momentXZ = s.xz * density - p.mass * p.centerX * p.centerZ;
  p.momentYZ = s.yz * density - p.mass * p.centerY * p.centerZ;
  return p;
}

MassProperties WeighTurned(const TurnedDesign& body, double density) {
  Sums sums;
  const std::vector<Station> line = Straight(body.line);
  const Station first{line.front().x, body.boreRadius}, last{line.back().x, body.boreRadius};
  AddFrustum(sums, first, line.front(), 1);
  for (std::size_t i = 0; i + 1 < line.size(); ++i) AddFrustum(sums, line[i], line[i + 1], 1);
  AddFrustum(sums, line.back(), last, 1);
  AddFrustum(sums, first, last, -1);  // the bore
  for (const Seat& seat : body.seats) {
    AddTurned(sums, SumsOf(seat), seat.turn, IsAdded(seat) ? 1 : -1);
  }
  return Weigh(sums, density);
}

// Integrals over the polygon of a cam's profile.
struct PolygonIntegrals {
  double area = 0, perimeter = 0, x = 0, y = 0, xx = 0, yy = 0, xy = 0;
};

PolygonIntegrals Integrate(const Profile& profile) {
  PolygonIntegrals sum;
  const std::size_t count = profile.first.size();
  for (std::size_t i = 0; i < count; ++i) {
    const double x0 = profile.first[i], y0 = profile.second[i];
    const double x1 = profile.first[(i + 1) % count], y1 = profile.second[(i + 1) % count];
    const double cross = x0 * y1 - x1 * y0;
    sum.area += cross / 2;
    sum.perimeter += std::hypot(x1 - x0, y1 - y0);
    sum.x += (x0 + x1) * cross / 6;
    sum.y += (y0 + y1) * cross / 6;
    sum.xx += (x0 * x0 + x0 * x1 + x1 * x1) * cross / 12;
    sum.yy += (y0 * y0 + y0 * y1 + y1 * y1) * cross / 12;
    sum.xy += (x0 * y1 + 2 * x0 * y0 + 2 * x1 * y1 + x1 * y0) * cross / 24;
  }
  if (sum.area < 0) {  // the points run clockwise
    sum = {-sum.area, sum.perimeter, -sum.x, -sum.y, -sum.xx, -sum.yy, -sum.xy};
  }
  return sum;
}

// The bore lies in the origin, as the cam's axis does.
std::optional<MassProperties> WeighCam(const Profile& profile, double width, double bore,
                                       double density) {
  PolygonIntegrals plane = Integrate(profile);
  const double hole = RingArea(bore, 0);
  plane.area -= hole;
  plane.perimeter += kPi * bore;
  plane.xx -= hole * Square(bore) / 16;
  plane.yy -= hole * Square(bore) / 16;
  if (!(plane.area > 0) || width <= 0) return std::nullopt;
  const double perArea = width * density;
  MassProperties cam;
  cam.volume = plane.area * width;
  cam.area = 2 * plane.area + plane.perimeter * width;
  cam.mass = plane.area * perArea;
  cam.centerX = plane.x / plane.area;
  cam.centerY = plane.y / plane.area;
  cam.centerZ = width / 2;
  const double slab = cam.mass * Square(width) / 12;
  cam.momentXX = perArea * plane.yy - cam.mass * Square(cam.centerY) + slab;
  cam.momentYY = perArea * plane.xx - cam.mass * Square(cam.centerX) + slab;
  cam.momentZZ = cam.momentXX + cam.momentYY - 2 * slab;
  cam.momentXY = perArea * plane.xy - cam.mass * cam.centerX * cam.centerY;
  return cam;
}

// Line of the body's half above the axis; teeth reach above the cylinder of a wheel.
std::vector<Point> HalfOutline(const TurnedDesign& body, double scale, double tipRadius) {
  std::vector<Point> points;
  for (const Station& station : Straight(body.line)) {
    points.push_back({station.x / scale, std::max(station.radius, tipRadius) / scale});
  }
  return points;
}

std::vector<Point> PointsOf(const Profile& profile) {
  std::vector<Point> points;
  for (std::size_t i = 0; i < profile.first.size(); ++i) {
    points.push_back({profile.first[i], profile.second[i]});
  }
  return points;
}

class FormulaKernel final : public Kernel {
 public:
  void Check(const PartDescription& part) const override { ReadDesign(part); }

  std::optional<MassProperties> Weigh(const PartDescription& part) const override {
    const double density = DensityOf(part);
    if (part.facets) return WeighFacets(part, density);
    if (const auto profile = ProfileOf(part)) return WeighProfile(part, *profile, density);
    const auto body = BodyOf(part);
    if (!body) return std::nullopt;
    return InDocumentUnits(WeighTurned(*body, density), part.unit);
  }

  Outlines Draw(const PartDescription& part) const override {
    if (part.facets) return part.facets->Draw();
    if (const auto profile = ProfileOf(part)) return {PointsOf(*profile)};
    const auto body = BodyOf(part);
    if (!body) return {};
    const double scale = ScaleOf(part.unit);
    const bool rows = body->line.size() > 2;
    const double tip = rows ? 0 : Numbers(part.parameters).Or("da", 0) * scale / 2;
    std::vector<Point> outline = HalfOutline(*body, scale, tip);
    const double length = outline.back().x;
    for (std::size_t i = outline.size(); i-- > 0;) outline.push_back({outline[i].x, -outline[i].y});
    const double bore = body->boreRadius / scale;
    if (bore <= 0) return {outline};
    return {outline, {{0, bore}, {length, bore}, {length, -bore}, {0, -bore}}};
  }

  NamedTexts Measure(const PartDescription& part) const override {
    double left = 0, right = 0, bottom = 0, top = 0;
    for (const auto& outline : Draw(part)) {
      for (const Point& point : outline) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
        bottom = std::min(bottom, point.y);
        top = std::max(top, point.y);
      }
    }
    if (right <= left) return {};
    return {{"Length", FormatNumber(right - left)}, {"Height", FormatNumber(top - bottom)}};
  }

  std::optional<ExchangeFiles> Export(const PartDescription&, const std::string&) const override {
    return std::nullopt;
  }

  std::optional<ExchangeFiles> ExportAssembly(const std::vector<Instance>&,
                                              const std::string&) const override {
    return std::nullopt;
  }

 private:
  static MassProperties WeighFacets(const PartDescription& part, double density) {
    MassProperties cube;
    cube.mass = density * std::pow(ScaleOf(part.unit), 3);
    return part.facets->Weigh(InDocumentUnits(cube, part.unit).mass);
  }

  static std::optional<MassProperties> WeighProfile(const PartDescription& part,
                                                    const Profile& profile, double density) {
    const Numbers numbers(part.parameters);
    const double scale = ScaleOf(part.unit);
    Profile scaled = profile;
    for (auto* list : {&scaled.first, &scaled.second}) {
      for (double& value : *list) value *= scale;
    }
    const auto cam = WeighCam(scaled, numbers.Or("b", kDefaultCamWidth) * scale,
                              std::max(0.0, numbers.Or("dh", 0)) * scale, density);
    if (!cam) return std::nullopt;
    return InDocumentUnits(*cam, part.unit);
  }
};

}  // namespace

std::unique_ptr<Kernel> MakeFormulaKernel() { return std::make_unique<FormulaKernel>(); }

}  // namespace drawboard
