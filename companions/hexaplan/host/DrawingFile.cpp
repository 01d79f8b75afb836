#include "hexaplan/host/DrawingFile.h"

#include <map>

#include "drawboard/DriveFiles.h"

namespace hexaplan {

namespace {

// Layers, as "Layers.ini" names them.
constexpr char kOutline[] = "OUTLINE";
constexpr char kCentre[] = "CENTRE";

class Dxf {
 public:
  void Circle(const char* layer, double diameter) {
    Begin("CIRCLE", layer);
    Point(10, 0, 0);
    Real(40, diameter / 2.0);
  }
  void Line(const char* layer, double x1, double y1, double x2, double y2) {
    Begin("LINE", layer);
    Point(10, x1, y1);
    Point(11, x2, y2);
  }
  std::string Finish() const {
    return "  0\nSECTION\n  2\nENTITIES\n" + entities + "  0\nENDSEC\n  0\nEOF\n";
  }

 private:
  void Group(int code, const std::string& value) {
    entities += (code < 10 ? "  " : " ") + std::to_string(code) + "\n" + value + "\n";
  }
  void Begin(const char* kind, const char* layer) {
    Group(0, kind);
    Group(8, layer);
  }
  void Real(int code, double value) { Group(code, NumberText(value)); }
  void Point(int code, double x, double y) {
    Real(code, x);
    Real(code + 10, y);
  }

  std::string entities;
};

using Values = std::map<std::string, double, NameLess>;

double ValueOf(const Values& values, const std::string& name) {
  const auto found = values.find(name);
  return found != values.end() ? found->second : 0.0;
}

bool DrawGear(const Values& values, Dxf& dxf) {
  const double tip = ValueOf(values, "da");
  if (tip <= 0.0) return false;
  dxf.Circle(kOutline, tip);
  dxf.Circle(kCentre, ValueOf(values, "d"));
  dxf.Circle(kOutline, ValueOf(values, "df"));
  if (ValueOf(values, "dh") > 0.0) dxf.Circle(kOutline, ValueOf(values, "dh"));
  dxf.Line(kCentre, -0.55 * tip, 0, 0.55 * tip, 0);
  dxf.Line(kCentre, 0, -0.55 * tip, 0, 0.55 * tip);
  return true;
}

bool DrawShaft(const Values& values, Dxf& dxf) {
  const int count = static_cast<int>(ValueOf(values, "#spiCount"));
  double x = 0.0;
  double before = 0.0;
  for (int i = 1; i <= count; ++i) {
    const double radius = ValueOf(values, "d_" + std::to_string(i)) / 2.0;
    const double end = x + ValueOf(values, "l_" + std::to_string(i));
    for (const double side : {1.0, -1.0}) {
      dxf.Line(kOutline, x, side * before, x, side * radius);
      dxf.Line(kOutline, x, side * radius, end, side * radius);
    }
    before = radius;
    x = end;
  }
  if (x <= 0.0) return false;
  for (const double side : {1.0, -1.0}) dxf.Line(kOutline, x, side * before, x, 0);
  dxf.Line(kCentre, -0.05 * x, 0, 1.05 * x, 0);
  return true;
}

}  // namespace

bool WriteDrawing(const std::string& path, const std::string& dataFileType,
                  const std::vector<DataParameter>& parameters) {
  Values values;
  for (const DataParameter& each : parameters) {
    double value = 0.0;
    if (ParseNumber(each.value, value)) values[each.name] = value;
  }
  Dxf dxf;
  const bool drawn = values.count("#spiCount") != 0 ? DrawShaft(values, dxf)
                     : !dataFileType.empty()        ? DrawGear(values, dxf)
                                                    : false;
  return drawn && !path.empty() && drawboard::WriteWholeFile(path, dxf.Finish());
}

}  // namespace hexaplan
