// Disc cams: one closed spline through the points of the profile. One edge for each point instead
// would make files nine times the size and checks that take seconds.
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <Geom_BSplineCurve.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <algorithm>
#include <gp_Circ.hxx>

#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace {

// Fewer points are the corners of a polygon.
constexpr std::size_t kLeastSplinePoints = 12;
constexpr double kPrecision = 1e-6;

TopoDS_Wire Polygon(const std::vector<Point>& points) {
  BRepBuilderAPI_MakePolygon polygon;
  for (const Point& point : points) polygon.Add(gp_Pnt(point.x, point.y, 0));
  polygon.Close();
  if (!polygon.IsDone()) FailStep("the profile of the cam");
  return polygon.Wire();
}

TopoDS_Wire Spline(const std::vector<Point>& points) {
  Handle(TColgp_HArray1OfPnt) array = new TColgp_HArray1OfPnt(1, static_cast<int>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i) {
    array->SetValue(static_cast<int>(i) + 1, gp_Pnt(points[i].x, points[i].y, 0));
  }
  GeomAPI_Interpolate spline(array, true, kPrecision);
  spline.Perform();
  if (!spline.IsDone()) FailStep("the profile of the cam");
  BRepBuilderAPI_MakeEdge edge(spline.Curve());
  BRepBuilderAPI_MakeWire wire(edge.Edge());
  if (!wire.IsDone()) FailStep("the profile of the cam");
  return wire.Wire();
}

double Area(const std::vector<Point>& points) {
  double sum = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point& next = points[(i + 1) % points.size()];
    sum += points[i].x * next.y - next.x * points[i].y;
  }
  return sum / 2;
}

TopoDS_Wire Bore(double radius) {
  if (radius <= 0) return {};
  const gp_Circ circle(gp_Ax2(gp_Pnt(), gp_Dir(0, 0, 1), gp_Dir(1, 0, 0)), radius);
  return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire();
}

}  // namespace

TopoDS_Shape BuildCam(const CamDesign& cam) {
  std::vector<Point> points = cam.profile;
  if (Area(points) < 0) std::reverse(points.begin(), points.end());
  const bool polygon = points.size() < kLeastSplinePoints;
  const TopoDS_Wire outline = polygon ? Polygon(points) : Spline(points);
  BRepPrimAPI_MakePrism prism(FaceOf(outline, Bore(cam.boreRadius), gp_Dir(0, 0, 1)),
                              gp_Vec(0, 0, cam.width));
  return ShapeOf(prism, "the cam");
}

}  // namespace drawboard
