#include "hexaplan/host/PartDrawings.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hexaplan {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kOwnOverlap = 0.05;  // of the part
// Straight pieces in place of a curve.
constexpr int kFlankPieces = 6;
constexpr int kRoundingPieces = 4;
constexpr int kHalfCirclePieces = 16;
// A circle of the same area as a hexagon, in widths across flats; so parts give their hexagons.
constexpr double kHexagonCircle = 1.0500751;
constexpr double kThreadDepth = 0.61343;  // pitches

struct Point {
  double x, y;
};

Point Polar(double radius, double angle) {
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

void Line(Shapes& shapes, Point from, Point to) {
  shapes.push_back({kOutlineLayer, from.x, from.y, to.x, to.y});
}

void Circle(Shapes& shapes, const char* layer, double diameter) {
  if (diameter > 0) shapes.push_back({layer, 0, 0, 0, 0, diameter});
}

void Closed(Shapes& shapes, const std::vector<Point>& points) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    Line(shapes, points[i], points[(i + 1) % points.size()]);
  }
}

double Overlap(const DrawingStyle& style, double size) {
  return style.axisOverlap > 0 ? style.axisOverlap : kOwnOverlap * size;
}

// Centre lines through the origin; what is drawn lies between the corners.
void Cross(Shapes& shapes, const DrawingStyle& style, Point least, Point most) {
  const double over = Overlap(style, std::max(most.x - least.x, most.y - least.y));
  shapes.push_back({kCentreLayer, least.x - over, 0, most.x + over, 0});
  shapes.push_back({kCentreLayer, 0, least.y - over, 0, most.y + over});
}

void Cross(Shapes& shapes, const DrawingStyle& style, double diameter) {
  const double radius = diameter / 2;
  Cross(shapes, style, {-radius, -radius}, {radius, radius});
}

void Axis(Shapes& shapes, const DrawingStyle& style, double length) {
  const double over = Overlap(style, length);
  shapes.push_back({kCentreLayer, -over, 0, length + over, 0});
}

// --- gears ---

double Involute(double angle) { return std::tan(angle) - angle; }

// Half of a tooth's angle at a radius; below the base circle the flank is radial.
double HalfTooth(const Values& values, double radius) {
  const double base = values.Of("db") / 2, reference = values.Of("d") / 2;
  const auto involute = [&](double at) { return Involute(std::acos(std::min(1.0, base / at))); };
  return values.Of("s") / (2 * reference) + involute(reference) - involute(std::max(radius, base));
}

// Up the right flank, over the tip, down the left one. A tip that has become a point stays one.
void AddTooth(std::vector<Point>& outline, const Values& values, double axis) {
  const double tip = values.Of("da") / 2, root = values.Of("df") / 2;
  const double foot = std::clamp(values.Of("db") / 2, root, tip);
  std::vector<double> radii;
  if (foot > root) radii.push_back(root);
  for (int i = 0; i <= kFlankPieces; ++i) radii.push_back(foot + (tip - foot) * i / kFlankPieces);
  for (const double radius : radii) {
    outline.push_back(Polar(radius, axis - std::max(0.0, HalfTooth(values, radius))));
  }
  std::reverse(radii.begin(), radii.end());
  for (const double radius : radii) {
    outline.push_back(Polar(radius, axis + std::max(0.0, HalfTooth(values, radius))));
  }
}

// The bore with a keyway at its top, when it has one.
void AddBore(Shapes& shapes, const Values& values) {
  const double bore = values.Of("dh"), width = values.Of("bk"), depth = values.Of("tk2");
  Circle(shapes, kOutlineLayer, bore);
  if (width <= 0 || depth <= 0 || width >= bore) return;
  const double side = std::sqrt(bore * bore - width * width) / 2, top = bore / 2 + depth;
  Line(shapes, {-width / 2, side}, {-width / 2, top});
  Line(shapes, {-width / 2, top}, {width / 2, top});
  Line(shapes, {width / 2, top}, {width / 2, side});
}

// --- shafts ---

// A piece of the profile between two places; `edge`: seen as a line where it begins.
struct Piece {
  double begin, end;
  double first, last;  // radii
  bool edge = true;
};
using Profile = std::vector<Piece>;

// What goes round a section. A groove without a place lies at the section's right end, or at its
// left one when the last name says so; its bottom is a diameter, else its depth counts.
struct Groove {
  int kind;
  const char* place;
  const char* length;
  const char* depth;
  const char* bottom = nullptr;
  const char* atLeft = nullptr;
};
constexpr Groove kGrooves[] = {
    {2, "RR_LR", "RR_M", nullptr, "RR_d1"},
    {6, nullptr, "NA_b", "NA_h", nullptr, "NA_add"},
    {7, nullptr, "NB_b", "NB_h", nullptr, "NB_add"},
    {8, "ND_LR", "ND_L", "ND_h"},
    {9, nullptr, "NF_b", "NF_h", nullptr, "NF_add"},
    {10, nullptr, "NG_b", "NG_h", nullptr, "NG_add"},
    {11, nullptr, "NDA_b", "NDA_h", nullptr, "PNDA_add"},
    {12, nullptr, "NDB_b", "NDB_h", nullptr, "NDB_add"},
    {14, "RNa_LR", "RNa_L", "RNa_H"},
    {15, "RNb_LR", "RNb_L", "RNb_H"},
};

// Ends of a section: kind of edge, chamfer, rounding.
struct EdgeNames {
  const char *kind, *chamfer, *rounding;
};
constexpr EdgeNames kLeftEdge{"#spi1Add", "s1", "s1r"};
constexpr EdgeNames kRightEdge{"#spi2Add", "s2", "s2r"};

// Kinds of sections with something beside the profile.
enum SectionKind { kKeyway = 3, kThread = 4, kCone = 5, kHole = 13, kSplines = 16, kFlats = 17 };

// One section while it is drawn. Places are those from its left end.
class SectionDrawing {
 public:
  SectionDrawing(const Values& values, int number)
      : values(values), number(number), kind(static_cast<int>(Of("#spiType"))) {}

  double Length() const { return Of("l"); }

  Profile Outline() const {
    const double radius = Of("d") / 2, length = Length();
    const double last = kind == kCone && Of("CONE_d1") > 0 ? Of("CONE_d1") / 2 : radius;
    Profile profile = {{0, length, radius, last}};
    for (const Groove& groove : kGrooves) {
      if (groove.kind == kind) Cut(profile, groove);
    }
    if (kind == kThread) {
      const double end = Of("LW_LR") + Of("LW_L");
      Cut(profile, end - Of("LW_B"), end, radius - Of("LW_T"));
    }
    RoundOff(profile);
    return profile;
  }

  // What lies on the section, which begins at x.
  void AddDetails(Shapes& shapes, double x) const {
    switch (kind) {
      case kKeyway:
        return AddSlot(shapes, x + Of("KEY_LR"), Of("KEY_L"), Of("KEY_B"));
      case kThread:
        return AddLines(shapes, x + Of("LW_LR"), Of("LW_L") - Of("LW_B"),
                        Of("d") / 2 - kThreadDepth * Of("LW_TP"));
      case kHole:
        if (Of("HOLE_D") > 0) {
          shapes.push_back({kOutlineLayer, x + Of("HOLE_LR"), 0, 0, 0, Of("HOLE_D")});
        }
        return;
      case kSplines:
        return AddLines(shapes, x, Length(), Of("Pr_R"));
      case kFlats:
        return AddFlat(shapes, x);
    }
  }

  // A slot with round ends.
  static void AddSlot(Shapes& shapes, double x, double length, double width) {
    if (width <= 0 || length < width) return;
    std::vector<Point> outline;
    const double radius = width / 2;
    for (const double middle : {x + length - radius, x + radius}) {
      const double from = outline.empty() ? -kPi / 2 : kPi / 2;
      for (int i = 0; i <= kHalfCirclePieces; ++i) {
        const Point point = Polar(radius, from + kPi * i / kHalfCirclePieces);
        outline.push_back({middle + point.x, point.y});
      }
    }
    Closed(shapes, outline);
  }

 private:
  double Of(const char* name) const { return values.Of(name, number); }

  void Cut(Profile& profile, const Groove& groove) const {
    const double width = Of(groove.length);
    double begin = Of(groove.place);
    if (groove.place == nullptr) begin = Of(groove.atLeft) == 1 ? 0 : Length() - width;
    Cut(profile, begin, begin + width,
        groove.bottom != nullptr ? Of(groove.bottom) / 2 : Of("d") / 2 - Of(groove.depth));
  }

  // Only into a cylinder; the profile has one piece.
  static void Cut(Profile& profile, double begin, double end, double radius) {
    const Piece whole = profile.front();
    end = std::min(end, whole.end);
    if (begin < 0 || begin >= end || radius <= 0 || radius >= whole.first) return;
    profile.clear();
    if (begin > 0) profile.push_back({0, begin, whole.first, whole.first});
    profile.push_back({begin, end, radius, radius});
    if (end < whole.end) profile.push_back({end, whole.end, whole.first, whole.first});
  }

  // How far an edge goes along the shaft.
  double Size(const EdgeNames& edge) const {
    const auto which = static_cast<int>(Of(edge.kind));
    return which == 1 ? Of(edge.chamfer) : which == 2 ? Of(edge.rounding) : 0;
  }

  // From the end face inwards: how far in, and how much is missing of the radius there.
  std::vector<Point> Steps(const EdgeNames& edge) const {
    const double size = Size(edge);
    if (static_cast<int>(Of(edge.kind)) == 1) return {{0, size}, {size, 0}};
    std::vector<Point> steps;
    for (int i = 0; i <= kRoundingPieces; ++i) {
      const Point at = Polar(size, kPi / 2 * i / kRoundingPieces);
      steps.push_back({size - at.x, size - at.y});
    }
    return steps;
  }

  void RoundOff(Profile& profile) const {
    if (const double size = Size(kLeftEdge); Fits(profile.front(), profile.front().first, size)) {
      const double radius = profile.front().first;
      profile.front().begin = size;
      Profile end;
      const std::vector<Point> steps = Steps(kLeftEdge);
      for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        end.push_back(
            {steps[i].x, steps[i + 1].x, radius - steps[i].y, radius - steps[i + 1].y, i == 0});
      }
      profile.insert(profile.begin(), end.begin(), end.end());
    }
    if (const double size = Size(kRightEdge); Fits(profile.back(), profile.back().last, size)) {
      const double radius = profile.back().last, length = profile.back().end;
      profile.back().end = length - size;
      const std::vector<Point> steps = Steps(kRightEdge);
      for (std::size_t i = steps.size() - 1; i > 0; --i) {
        profile.push_back({length - steps[i].x, length - steps[i - 1].x, radius - steps[i].y,
                           radius - steps[i - 1].y, i + 1 == steps.size()});
      }
    }
  }

  // A cone keeps its edges sharp in the drawing.
  static bool Fits(const Piece& piece, double radius, double size) {
    return size > 0 && size < radius && size < piece.end - piece.begin && piece.first == piece.last;
  }

  // Along the shaft on both sides of its axis.
  static void AddLines(Shapes& shapes, double x, double length, double radius) {
    if (length <= 0 || radius <= 0) return;
    for (const double side : {radius, -radius}) Line(shapes, {x, side}, {x + length, side});
  }

  // A flat face towards the viewer, marked by its diagonals.
  void AddFlat(Shapes& shapes, double x) const {
    const double across = Of("WO_X"), diameter = Of("d");
    if (across <= 0 || across >= diameter) return;
    const double length = Of("WO_L") > 0 ? std::min(Of("WO_L"), Length()) : Length();
    const double begin = x + (Length() - length) / 2, end = begin + length;
    const double half = std::sqrt(diameter * diameter - across * across) / 2;
    Closed(shapes, {{begin, -half}, {end, -half}, {end, half}, {begin, half}});
    Line(shapes, {begin, -half}, {end, half});
    Line(shapes, {begin, half}, {end, -half});
  }

  const Values& values;
  int number;
  int kind;
};

// What a profile follows: its radius, and whether it is a cylinder.
struct Reached {
  double radius = 0;
  bool cylinder = true;
};

// Draws a profile that begins at x, and goes on from what was reached. Cylinders that are flush
// show no edge.
void AddProfile(Shapes& shapes, const Profile& profile, double x, Reached& reached) {
  for (const Piece& piece : profile) {
    const bool cylinder = piece.first == piece.last;
    const bool flush = reached.radius == piece.first && reached.cylinder && cylinder;
    const double edge = std::max(reached.radius, piece.first);
    if (piece.edge && !flush) Line(shapes, {x + piece.begin, -edge}, {x + piece.begin, edge});
    for (const double side : {1.0, -1.0}) {
      Line(shapes, {x + piece.begin, side * piece.first}, {x + piece.end, side * piece.last});
    }
    reached = {piece.last, cylinder};
  }
}

void AddEndFace(Shapes& shapes, double x, const Reached& reached) {
  Line(shapes, {x, -reached.radius}, {x, reached.radius});
}

// --- fasteners ---

// How much of a bolt has a thread, by its length (ISO 4014, ASME B18.2.1).
double ThreadLength(double diameter, double length, bool inches) {
  if (inches) return 2 * diameter + (length <= 6 ? 0.25 : 0.5);
  return 2 * diameter + (length <= 125 ? 6 : length <= 200 ? 12 : 25);
}

// The root of the thread, from the stress area, in whose diameter its pitch is.
double RootDiameter(const Values& values, bool inches) {
  const double diameter = values.Of("d_2");
  const double stress = std::sqrt(4 * values.Of("As") / kPi);
  const double pitch = (diameter - stress) / (inches ? 0.9743 : 0.9382);
  return stress > 0 ? diameter - 2 * kThreadDepth * pitch : 0;
}

Shapes DrawBolt(const Values& values, const DrawingStyle& style) {
  const double head = values.Of("l_1"), length = values.Of("l_2");
  const double corners = values.Of("d_1") / kHexagonCircle * 2 / std::sqrt(3.0);
  const bool inches = values.Of("units") == 1;
  Shapes shapes;
  Reached reached;
  AddProfile(shapes, {{0, head, corners / 2, corners / 2}}, 0, reached);
  for (const double side : {1.0, -1.0}) {
    Line(shapes, {0, side * corners / 4}, {head, side * corners / 4});
  }
  const double radius = values.Of("d_2") / 2;
  AddProfile(shapes, {{0, length, radius, radius}}, head, reached);
  const double end = head + length;
  AddEndFace(shapes, end, reached);
  if (const double root = RootDiameter(values, inches) / 2; root > 0) {
    const double begin = end - std::min(length, ThreadLength(2 * radius, length, inches));
    Line(shapes, {begin, -radius}, {begin, radius});
    for (const double side : {root, -root}) Line(shapes, {begin, side}, {end, side});
  }
  Axis(shapes, style, end);
  return shapes;
}

Shapes DrawNut(const Values& values, const DrawingStyle& style) {
  const double corners = values.Of("d_1") / kHexagonCircle * 2 / std::sqrt(3.0);
  Shapes shapes;
  std::vector<Point> hexagon;
  for (int i = 0; i < 6; ++i) hexagon.push_back(Polar(corners / 2, kPi / 3 * i));
  Closed(shapes, hexagon);
  Circle(shapes, kOutlineLayer, values.Of("dh"));
  Cross(shapes, style, corners);
  return shapes;
}

Shapes DrawWasher(const Values& values, const DrawingStyle& style) {
  Shapes shapes;
  Circle(shapes, kOutlineLayer, values.Of("d_1"));
  Circle(shapes, kOutlineLayer, values.Of("dh"));
  Cross(shapes, style, values.Of("d_1"));
  return shapes;
}

}  // namespace

Values::Values(const std::vector<DataParameter>& parameters) {
  for (const DataParameter& each : parameters) {
    double value = 0.0;
    if (ParseNumber(each.value, value)) values[each.name] = value;
  }
}

double Values::Of(const std::string& name) const {
  const auto found = values.find(name);
  return found != values.end() ? found->second : 0.0;
}

double Values::Of(const char* name, int number) const {
  return name != nullptr ? Of(std::string(name) + "_" + std::to_string(number)) : 0.0;
}

Shapes DrawGear(const Values& values, const DrawingStyle& style) {
  const double tip = values.Of("da");
  if (tip <= 0.0) return {};
  Shapes shapes;
  const auto teeth = static_cast<int>(values.Of("z"));
  const bool toothed = teeth > 0 && values.Of("s") > 0 && values.Of("db") > 0 &&
                       values.Of("d") > 0 && values.Of("df") > 0 && values.Of("df") < tip;
  if (toothed) {
    std::vector<Point> outline;
    for (int i = 0; i < teeth; ++i) AddTooth(outline, values, kPi / 2 + 2 * kPi * i / teeth);
    Closed(shapes, outline);
  } else {
    Circle(shapes, kOutlineLayer, tip);
    Circle(shapes, kOutlineLayer, values.Of("df"));
  }
  Circle(shapes, kCentreLayer, values.Of("d"));
  AddBore(shapes, values);
  Cross(shapes, style, tip);
  return shapes;
}

Shapes DrawShaft(const Values& values, const DrawingStyle& style) {
  Shapes shapes;
  double x = 0.0;
  Reached reached;
  const int count = static_cast<int>(values.Of("#spiCount"));
  for (int number = 1; number <= count; ++number) {
    const SectionDrawing section(values, number);
    if (section.Length() <= 0) return {};
    AddProfile(shapes, section.Outline(), x, reached);
    section.AddDetails(shapes, x);
    x += section.Length();
  }
  if (x <= 0.0) return {};
  AddEndFace(shapes, x, reached);
  Axis(shapes, style, x);
  return shapes;
}

Shapes DrawCam(const Values& values, const DrawingStyle& style) {
  std::vector<Point> profile;
  Point least{0, 0}, most{0, 0};
  for (int i = 1; values.Of("l", i) > 0; ++i) {
    const Point point = Polar(values.Of("l", i), values.Of("a", i) * kPi / 180);
    least = {std::min(least.x, point.x), std::min(least.y, point.y)};
    most = {std::max(most.x, point.x), std::max(most.y, point.y)};
    profile.push_back(point);
  }
  if (profile.size() < 3) return {};
  Shapes shapes;
  Closed(shapes, profile);
  Circle(shapes, kCentreLayer, 2 * values.Of("bv"));
  Circle(shapes, kOutlineLayer, values.Of("dh"));
  Cross(shapes, style, least, most);
  return shapes;
}

Shapes DrawFastener(const Values& values, const DrawingStyle& style) {
  constexpr double kLoose = 1.01;  // a thread has no play
  if (values.Of("d_1") <= 0) return {};
  if (values.Of("d_2") > 0) return DrawBolt(values, style);
  return values.Of("dh") > kLoose * values.Of("d") ? DrawWasher(values, style)
                                                   : DrawNut(values, style);
}

Shapes DrawKey(const Values& values, const DrawingStyle& style) {
  constexpr int kSquareEnds = 2;
  const double width = values.Of("bk"), length = values.Of("lk");
  if (width <= 0 || length <= 0) return {};
  Shapes shapes;
  if (static_cast<int>(values.Of("form")) == kSquareEnds || length < width) {
    Closed(shapes, {{0, -width / 2}, {length, -width / 2}, {length, width / 2}, {0, width / 2}});
  } else {
    SectionDrawing::AddSlot(shapes, 0, length, width);
  }
  Axis(shapes, style, length);
  return shapes;
}

}  // namespace hexaplan
