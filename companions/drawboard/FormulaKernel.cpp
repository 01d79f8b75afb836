// Closed formulas. A toothed wheel counts as the cylinder of its reference diameter (the gaps
// below it and the teeth above it nearly cancel), a shaft as its steps, a cam as the prism of its
// profile. Names of parameters match without regard to case.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <unordered_map>

#include "drawboard/Kernel.h"
#include "platform/System.h"

namespace drawboard {
namespace {

constexpr double kPi = std::numbers::pi;

// Steel, where the part's parameters give no density.
constexpr double kSteelDensity = 7850;             // kg/m3
constexpr double kCubicMillimetresPerMetre = 1e9;  // kg/m3 -> kg/mm3
constexpr double kMillimetresPerInch = 25.4;
constexpr double kKilogramsPerPound = 0.45359237;
constexpr double kDefaultCamWidth = 10;  // mm
constexpr int kMostSections = 200;

struct Section {
  double diameter = 0;
  double length = 0;
};

// Sections one after the other along x, with one bore through all of them.
struct Revolution {
  std::vector<Section> sections;
  double bore = 0;
  double tip = 0;  // diameter that the outline shows in place of the first section's, if larger
};

// The numbers among the parameters, by name without regard to case.
class Numbers {
 public:
  explicit Numbers(const NamedTexts& parameters) {
    for (const NamedText& parameter : parameters) {
      if (const auto value = ParseNumber(parameter.value)) {
        values.try_emplace(quillmar::platform::LowerCase(parameter.name), *value);
      }
    }
  }
  std::optional<double> Of(const std::string& lowerCaseName) const {
    const auto found = values.find(lowerCaseName);
    if (found == values.end()) return std::nullopt;
    return found->second;
  }
  double Or(const std::string& lowerCaseName, double fallback) const {
    return Of(lowerCaseName).value_or(fallback);
  }

 private:
  std::unordered_map<std::string, double> values;
};

// Mass of a unit of volume, in the document's units.
double DensityOf(const Numbers& numbers, Unit unit) {
  const double metric = numbers.Or("ro", kSteelDensity) / kCubicMillimetresPerMetre;
  if (unit == Unit::Millimetre) return metric;
  return metric * std::pow(kMillimetresPerInch, 3) / kKilogramsPerPound;
}

// The rows "D_1", "L_1", "D_2" ... of a shaft.
std::vector<Section> ShaftSections(const Numbers& numbers) {
  std::vector<Section> sections;
  for (int i = 1; i <= kMostSections; ++i) {
    const auto row = "_" + std::to_string(i);
    const double diameter = numbers.Or("d" + row, 0);
    const double length = numbers.Or("l" + row, 0);
    if (diameter <= 0 || length <= 0) break;
    sections.push_back({diameter, length});
  }
  return sections;
}

std::optional<Revolution> RevolutionOf(const Numbers& numbers) {
  Revolution body;
  body.bore = std::max(0.0, numbers.Or("dh", 0));
  body.sections = ShaftSections(numbers);
  if (body.sections.empty()) {
    const Section wheel{numbers.Or("d", 0), numbers.Or("b", 0)};
    if (wheel.diameter <= 0 || wheel.length <= 0) return std::nullopt;
    body.sections.push_back(wheel);
    body.tip = numbers.Or("da", 0);
  }
  const bool bored = std::all_of(body.sections.begin(), body.sections.end(),
                                 [&](const Section& s) { return s.diameter > body.bore; });
  if (!bored) return std::nullopt;
  return body;
}

// The rows "l_1", "a_1" ... of a cam, "cPoint" of them: lengths and angles in degrees.
std::optional<Profile> ProfileOf(const PartDescription& part, const Numbers& numbers) {
  if (part.profile) return part.profile;
  const auto count = static_cast<int>(std::clamp(numbers.Or("cpoint", 0), 0.0, 1e6));
  Profile profile;
  for (int i = 1; i <= count; ++i) {
    const auto row = "_" + std::to_string(i);
    const double angle = numbers.Or("a" + row, 0) * kPi / 180;
    profile.first.push_back(numbers.Or("l" + row, 0) * std::sin(angle));
    profile.second.push_back(numbers.Or("l" + row, 0) * std::cos(angle));
  }
  if (profile.first.empty()) return std::nullopt;
  return profile;
}

double Square(double value) { return value * value; }

double RingArea(double diameter, double bore) {
  return kPi / 4 * (Square(diameter) - Square(bore));
}

// Shells, steps between sections, end faces and the bore's wall.
double SurfaceOf(const Revolution& body) {
  double area = 0;
  double before = body.bore;
  for (const Section& section : body.sections) {
    area += kPi * section.length * (section.diameter + body.bore);
    area += std::abs(RingArea(section.diameter, 0) - RingArea(before, 0));
    before = section.diameter;
  }
  return area + RingArea(before, body.bore);
}

MassProperties WeighRevolution(const Revolution& body, double density) {
  MassProperties total;
  double begin = 0;
  double firstMoment = 0;   // of volume, about x = 0
  double secondMoment = 0;  // of mass across the axis, about x = 0
  for (const Section& section : body.sections) {
    const double volume = RingArea(section.diameter, body.bore) * section.length;
    const double mass = volume * density;
    const double radii = (Square(section.diameter) + Square(body.bore)) / 4;
    const double middle = begin + section.length / 2;
    total.volume += volume;
    firstMoment += volume * middle;
    total.momentXX += mass * radii / 2;
    secondMoment += mass * ((3 * radii + Square(section.length)) / 12 + Square(middle));
    begin += section.length;
  }
  total.area = SurfaceOf(body);
  total.mass = total.volume * density;
  total.centerX = firstMoment / total.volume;
  total.momentYY = total.momentZZ = secondMoment - total.mass * Square(total.centerX);
  return total;
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

std::vector<Point> HalfOutline(const Revolution& body) {
  std::vector<Point> points;
  double begin = 0;
  for (const Section& section : body.sections) {
    const double radius = std::max(section.diameter, body.tip) / 2;
    points.push_back({begin, radius});
    begin += section.length;
    points.push_back({begin, radius});
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
  std::optional<MassProperties> Weigh(const PartDescription& part) const override {
    const Numbers numbers(part.parameters);
    const double density = DensityOf(numbers, part.unit);
    if (const auto profile = ProfileOf(part, numbers)) {
      return WeighCam(*profile, numbers.Or("b", kDefaultCamWidth),
                      std::max(0.0, numbers.Or("dh", 0)), density);
    }
    const auto body = RevolutionOf(numbers);
    if (!body) return std::nullopt;
    return WeighRevolution(*body, density);
  }

  Outlines Draw(const PartDescription& part) const override {
    const Numbers numbers(part.parameters);
    if (const auto profile = ProfileOf(part, numbers)) return {PointsOf(*profile)};
    const auto body = RevolutionOf(numbers);
    if (!body) return {};
    std::vector<Point> outline = HalfOutline(*body);
    const double length = outline.back().x;
    for (std::size_t i = outline.size(); i-- > 0;) outline.push_back({outline[i].x, -outline[i].y});
    const double bore = body->bore / 2;
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
};

}  // namespace

std::unique_ptr<Kernel> MakeFormulaKernel() { return std::make_unique<FormulaKernel>(); }

}  // namespace drawboard
