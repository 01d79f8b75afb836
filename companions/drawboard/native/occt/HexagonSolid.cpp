// Bolts and nuts with a hexagon, its corners broken at 30 degrees.
#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <cmath>
#include <numbers>

#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace {

// Diameter of the flat round face, in widths across flats.
constexpr double kFaceDiameter = 0.95;

TopoDS_Shape Prism(const HexagonDesign& hexagon) {
  const double corner = hexagon.acrossFlats / std::numbers::sqrt3;
  BRepBuilderAPI_MakePolygon polygon;
  for (int i = 0; i < 6; ++i) {
    const double angle = std::numbers::pi / 3 * i;
    polygon.Add(gp_Pnt(0, corner * std::cos(angle), corner * std::sin(angle)));
  }
  polygon.Close();
  BRepPrimAPI_MakePrism prism(FaceOf(polygon.Wire(), {}, gp_Dir(1, 0, 0)),
                              gp_Vec(hexagon.height, 0, 0));
  return ShapeOf(prism, "a hexagon");
}

// The hexagon with broken corners: at its outer face, a nut at both.
TopoDS_Shape Broken(const HexagonDesign& hexagon) {
  const double face = hexagon.acrossFlats * kFaceDiameter / 2;
  const double corner = hexagon.acrossFlats / std::numbers::sqrt3 * 1.001;
  const double slope = std::min((corner - face) / std::numbers::sqrt3, hexagon.height / 3);
  TurnedDesign round;
  round.line = {{0, face}, {slope, corner}};
  if (hexagon.shankLength > 0) {
    round.line.push_back({hexagon.height, corner});
  } else {
    round.line.push_back({hexagon.height - slope, corner});
    round.line.push_back({hexagon.height, face});
  }
  BRepAlgoAPI_Common broken(Prism(hexagon), BuildTurned(round));
  return ShapeOf(broken, "a hexagon");
}

// Begins inside the head, so that no two faces only touch.
TopoDS_Shape Shank(const HexagonDesign& bolt) {
  const double end = bolt.height + bolt.shankLength;
  TurnedDesign shank;
  shank.line = {{bolt.height / 2, bolt.shankRadius}, {end - bolt.pointChamfer, bolt.shankRadius}};
  if (bolt.pointChamfer > 0) shank.line.push_back({end, bolt.shankRadius - bolt.pointChamfer});
  return BuildTurned(shank);
}

TopoDS_Shape Hole(const HexagonDesign& nut) {
  TurnedDesign hole;
  hole.line = {{-nut.height, nut.boreRadius}, {2 * nut.height, nut.boreRadius}};
  return BuildTurned(hole);
}

}  // namespace

TopoDS_Shape BuildHexagon(const HexagonDesign& hexagon) {
  const TopoDS_Shape body = Broken(hexagon);
  if (hexagon.shankLength > 0) {
    BRepAlgoAPI_Fuse bolt(body, Shank(hexagon));
    return ShapeOf(bolt, "the bolt");
  }
  BRepAlgoAPI_Cut nut(body, Hole(hexagon));
  return ShapeOf(nut, "the nut");
}

}  // namespace drawboard
