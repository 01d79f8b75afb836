// The isometric picture of a solid: exact hidden-line removal, drawn as SVG.
#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRepLib.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_Algo.hxx>
#include <HLRBRep_HLRToShape.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>

#include "drawboard/ListText.h"
#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace {

constexpr double kTurn = 0.1;          // radians between two points of a curve
constexpr double kChord = 1e-3;        // from the curve, as a part of the picture's size
constexpr double kMargin = 0.03;       // around the picture
constexpr double kSharpWidth = 0.003;  // of lines, as parts of the picture's size

struct Frame {
  double left = INFINITY, right = -INFINITY, bottom = INFINITY, top = -INFINITY;
  void Add(const Point& p) {
    left = std::min(left, p.x), right = std::max(right, p.x);
    bottom = std::min(bottom, p.y), top = std::max(top, p.y);
  }
  double Size() const { return std::max({right - left, top - bottom, 1e-6}); }
};

using Path = std::vector<Point>;

// A thousandth of a millimetre; no picture shows more.
std::string Number(double value) { return FormatNumber(std::round(value * 1000) / 1000 + 0.0); }

void AddPaths(const TopoDS_Shape& lines, double size, std::vector<Path>& paths) {
  if (lines.IsNull()) return;
  BRepLib::BuildCurves3d(lines);
  for (TopExp_Explorer edges(lines, TopAbs_EDGE); edges.More(); edges.Next()) {
    const BRepAdaptor_Curve curve(TopoDS::Edge(edges.Current()));
    const GCPnts_TangentialDeflection points(curve, kTurn, kChord * size);
    Path path;
    for (int i = 1; i <= points.NbPoints(); ++i) {
      path.push_back({points.Value(i).X(), points.Value(i).Y()});
    }
    if (path.size() > 1) paths.push_back(std::move(path));
  }
}

std::string PathText(const Path& path) {
  std::string text;
  for (const Point& point : path) {
    text += (text.empty() ? "M" : "L") + Number(point.x) + " " + Number(-point.y);
  }
  return text;
}

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
        break;
    }
  }
  return escaped;
}

double SizeOf(const TopoDS_Shape& shape) {
  Bnd_Box box;
  BRepBndLib::Add(shape, box, false);
  return std::sqrt(box.SquareExtent());
}

}  // namespace

std::string SvgOf(const TopoDS_Solid& solid, const std::string& name) {
  const double size = SizeOf(solid);
  Handle(HLRBRep_Algo) view = new HLRBRep_Algo();
  view->Add(solid);
  // From the front, the right and above: z points up, x to the right and away.
  view->Projector(HLRAlgo_Projector(gp_Ax2(gp_Pnt(), gp_Dir(1, -1, 1), gp_Dir(1, 1, 0))));
  view->Update();
  view->Hide();
  HLRBRep_HLRToShape visible(view);
  std::vector<Path> paths;
  AddPaths(visible.VCompound(), size, paths);
  AddPaths(visible.OutLineVCompound(), size, paths);

  Frame frame;
  std::vector<std::string> lines;
  for (const Path& path : paths) {
    for (const Point& point : path) frame.Add(point);
    lines.push_back("<path d=\"" + PathText(path) + "\"/>\n");
  }
  if (lines.empty()) FailStep("a picture of the part");
  // The order in which the modeller hands out edges is nobody's promise.
  std::sort(lines.begin(), lines.end());
  const double margin = kMargin * frame.Size();
  const double width = frame.right - frame.left + 2 * margin;
  const double height = frame.top - frame.bottom + 2 * margin;
  std::string text =
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" + Number(frame.left - margin) + " " +
      Number(-frame.top - margin) + " " + Number(width) + " " + Number(height) +
      "\" fill=\"none\" stroke=\"black\" stroke-linecap=\"round\" " +
      "stroke-linejoin=\"round\" stroke-width=\"" + Number(kSharpWidth * frame.Size()) +
      "\">\n<title>" + Escaped(name) + "</title>\n";
  for (const std::string& line : lines) text += line;
  return text + "</svg>\n";
}

}  // namespace drawboard
