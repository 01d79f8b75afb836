#include "hexaplan/host/Shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

#include "hexaplan/calculation/Fields.h"
#include "platform/Profile.h"
#include "platform/System.h"

namespace hexaplan {
namespace {

constexpr double kPi = 3.141592653589793;

struct Box {
  double left = 0, bottom = 0, right = 0, top = 0;
  void Add(double x, double y, bool first) {
    left = first ? x : std::min(left, x);
    right = first ? x : std::max(right, x);
    bottom = first ? y : std::min(bottom, y);
    top = first ? y : std::max(top, y);
  }
};

Box Around(const Shapes& shapes) {
  Box box;
  bool first = true;
  for (const Shape& shape : shapes) {
    const double radius = shape.diameter / 2.0;
    box.Add(shape.x1 - radius, shape.y1 - radius, first);
    first = false;
    if (shape.diameter > 0) {
      box.Add(shape.x1 + radius, shape.y1 + radius, false);
    } else {
      box.Add(shape.x2, shape.y2, false);
    }
  }
  return box;
}

// --- DXF ---

struct LineType {
  const char* name;
  const char* meaning;
  std::vector<double> dashes;  // lengths, gaps below 0
};
const LineType kLineTypes[] = {{"CONTINUOUS", "Solid line", {}},
                               {"CENTER", "Long and short dashes", {31.75, -6.35, 6.35, -6.35}},
                               {"HIDDEN", "Short dashes", {6.35, -3.175}}};
constexpr int kLastColour = 255;

struct NamedLayer {
  const char* name;
  LayerStyle style;
};

void ReadLayer(const std::string& file, const char* name, LayerStyle& style) {
  constexpr std::size_t kValueSize = 256;
  const std::string value =
      quillmar::platform::ReadProfileText(file, "Layers", name, "", kValueSize);
  const auto comma = std::min(value.find(','), value.size());
  double colour = 0;
  if (ParseNumber(value.substr(0, comma), colour) && colour >= 1 && colour <= kLastColour) {
    style.colour = static_cast<int>(colour);
  }
  for (const LineType& known : kLineTypes) {
    if (comma < value.size() &&
        quillmar::platform::EqualsNoCase(value.substr(comma + 1), known.name)) {
      style.lineType = known.name;
    }
  }
}

class Dxf {
 public:
  std::string Write(const Shapes& shapes, const Layers& layers) {
    Begin("HEADER");
    Group(9, "$ACADVER");
    Group(1, "AC1009");
    const Box box = Around(shapes);
    Group(9, "$EXTMIN");
    Point(10, box.left, box.bottom);
    Group(9, "$EXTMAX");
    Point(10, box.right, box.top);
    Group(0, "ENDSEC");
    Begin("TABLES");
    Table("LTYPE", kLineTypes);
    const NamedLayer named[] = {{kOutlineLayer, layers.outline}, {kCentreLayer, layers.centre}};
    Table("LAYER", named);
    Group(0, "ENDSEC");
    Begin("ENTITIES");
    for (const Shape& shape : shapes) Add(shape);
    Group(0, "ENDSEC");
    Group(0, "EOF");
    return std::move(text);
  }

 private:
  void Begin(const char* section) {
    Group(0, "SECTION");
    Group(2, section);
  }
  template <class Entries>
  void Table(const char* name, const Entries& entries) {
    Group(0, "TABLE");
    Group(2, name);
    Group(70, std::to_string(std::size(entries)));
    for (const auto& entry : entries) {
      Group(0, name);
      Group(2, entry.name);
      Group(70, "0");
      Describe(entry);
    }
    Group(0, "ENDTAB");
  }
  void Describe(const LineType& type) {
    Group(3, type.meaning);
    Group(72, "65");  // the only alignment that there is
    Group(73, std::to_string(type.dashes.size()));
    double length = 0;
    for (const double dash : type.dashes) length += std::abs(dash);
    Real(40, length);
    for (const double dash : type.dashes) Real(49, dash);
  }
  void Describe(const NamedLayer& layer) {
    Group(62, std::to_string(layer.style.colour));
    Group(6, layer.style.lineType);
  }
  void Add(const Shape& shape) {
    Group(0, shape.diameter > 0 ? "CIRCLE" : "LINE");
    Group(8, shape.layer);
    Point(10, shape.x1, shape.y1);
    if (shape.diameter > 0) {
      Real(40, shape.diameter / 2.0);
    } else {
      Point(11, shape.x2, shape.y2);
    }
  }
  void Group(int code, const std::string& value) {
    text += (code < 10 ? "  " : " ") + std::to_string(code) + "\n" + value + "\n";
  }
  void Real(int code, double value) { Group(code, NumberText(value)); }
  void Point(int code, double x, double y) {
    Real(code, x);
    Real(code + 10, y);
  }

  std::string text;
};

// --- metafile ---

constexpr double kPictureSize = 20000;  // units along the longer side; coordinates have 16 bits
constexpr int kUnitsPerInch = 2540;

class Metafile {
 public:
  explicit Metafile(const Box& box) : box(box) {
    const double longer = std::max({box.right - box.left, box.top - box.bottom, 1e-9});
    scale = kPictureSize / longer;
    Record(kSetWindowOrg, {0, 0});
    Record(kSetWindowExt, {Y(box.bottom), X(box.right)});
    // Circles are drawn as outlines.
    Record(kCreateBrush, {kHollow, 0, 0, 0});
    Record(kSelectObject, {0});
  }
  void Add(const Shape& shape) {
    const double radius = shape.diameter / 2.0;
    if (shape.diameter > 0) {
      Record(kEllipse, {Y(shape.y1 - radius), X(shape.x1 + radius), Y(shape.y1 + radius),
                        X(shape.x1 - radius)});
    } else {
      Record(kMoveTo, {Y(shape.y1), X(shape.x1)});
      Record(kLineTo, {Y(shape.y2), X(shape.x2)});
    }
  }
  std::string Finish() {
    Record(0, {});
    // Placeable header: key, bounding box, units, and the exclusive or of the words before.
    const std::array<int, 10> place = {0xCDD7,        0x9AC6,        0, 0, 0, X(box.right),
                                       Y(box.bottom), kUnitsPerInch, 0, 0};
    std::string file;
    int sum = 0;
    for (const int word : place) {
      sum ^= word & 0xFFFF;
      Put(file, word);
    }
    Put(file, sum);
    const auto words = static_cast<int>(kHeaderWords + records.size() / 2);
    for (const int word : {1, static_cast<int>(kHeaderWords), 0x0300, words & 0xFFFF, words >> 16,
                           1, static_cast<int>(longest), 0, 0}) {
      Put(file, word);
    }
    return file + records;
  }

 private:
  static constexpr std::size_t kHeaderWords = 9;
  static constexpr int kSetWindowOrg = 0x020B, kSetWindowExt = 0x020C, kCreateBrush = 0x02FC,
                       kSelectObject = 0x012D, kEllipse = 0x0418, kMoveTo = 0x0214,
                       kLineTo = 0x0213, kHollow = 1;

  // Down the page, from the upper left corner.
  int X(double x) const { return static_cast<int>(std::lround((x - box.left) * scale)); }
  int Y(double y) const { return static_cast<int>(std::lround((box.top - y) * scale)); }
  static void Put(std::string& text, int word) {
    text += static_cast<char>(word & 0xFF);
    text += static_cast<char>((word >> 8) & 0xFF);
  }
  void Record(int function, const std::vector<int>& words) {
    const std::size_t size = words.size() + 3;
    longest = std::max(longest, size);
    Put(records, static_cast<int>(size));
    Put(records, 0);
    Put(records, function);
    for (const int word : words) Put(records, word);
  }

  Box box;
  double scale = 1;
  std::string records;
  std::size_t longest = 0;
};

// --- facets ---

constexpr int kSides = 72;

struct Point {
  double x, y, z;
};

class Facets {
 public:
  // A strip between two rings; equal places give a flat one.
  void Strip(double x1, double radius1, double x2, double radius2) {
    for (int side = 0; side < kSides; ++side) {
      const Point a = At(x1, radius1, side), b = At(x1, radius1, side + 1);
      const Point c = At(x2, radius2, side), d = At(x2, radius2, side + 1);
      Triangle(a, b, c);
      Triangle(b, d, c);
    }
  }
  std::string Finish(const std::string& name) const {
    return "solid " + name + "\n" + text + "endsolid " + name + "\n";
  }

 private:
  static Point At(double x, double radius, int side) {
    const double angle = 2.0 * kPi * (side % kSides) / kSides;
    return {x, radius * std::cos(angle), radius * std::sin(angle)};
  }
  void Triangle(const Point& a, const Point& b, const Point& c) {
    const Point u = {b.x - a.x, b.y - a.y, b.z - a.z};
    const Point v = {c.x - a.x, c.y - a.y, c.z - a.z};
    Point normal = {u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    const double length = std::hypot(normal.x, normal.y, normal.z);
    if (length <= 0.0) return;  // where a ring has shrunk to the axis
    normal = {normal.x / length, normal.y / length, normal.z / length};
    text += "facet normal " + Text(normal) + "\n outer loop\n";
    for (const Point& point : {a, b, c}) text += "  vertex " + Text(point) + "\n";
    text += " endloop\nendfacet\n";
  }
  static std::string Text(const Point& point) {
    return NumberText(point.x) + " " + NumberText(point.y) + " " + NumberText(point.z);
  }

  std::string text;
};

}  // namespace

Layers ReadLayers(const std::string& file) {
  Layers layers;
  if (file.empty()) return layers;
  ReadLayer(file, kOutlineLayer, layers.outline);
  ReadLayer(file, kCentreLayer, layers.centre);
  return layers;
}

std::string ToDxf(const Shapes& shapes, const Layers& layers) {
  return Dxf().Write(shapes, layers);
}

std::string ToMetafile(const Shapes& shapes) {
  Metafile metafile(Around(shapes));
  for (const Shape& shape : shapes) metafile.Add(shape);
  return metafile.Finish();
}

std::string ToFacets(const TurnedBody& body, const std::string& name) {
  Facets facets;
  double x = 0;
  double radius = body.bore;
  for (const TurnedSection& section : body.sections) {
    facets.Strip(x, radius, x, section.radius);
    facets.Strip(x, section.radius, x + section.length, section.radius);
    x += section.length;
    radius = section.radius;
  }
  facets.Strip(x, radius, x, body.bore);
  if (body.bore > 0) facets.Strip(x, body.bore, 0, body.bore);
  return facets.Finish(name);
}

}  // namespace hexaplan
