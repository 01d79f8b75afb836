#include "drawboard/native/occt/Solid.h"

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gp_Mat.hxx>
#include <gp_Pln.hxx>

#include "drawboard/BoardError.h"

namespace drawboard {
namespace {

// Smaller is no body but what rounding leaves of one; mm3.
constexpr double kLeastVolume = 1e-6;

TopoDS_Shape Build(const GearDesign& gear) { return BuildGear(gear); }
TopoDS_Shape Build(const TurnedDesign& body) { return BuildTurned(body); }
TopoDS_Shape Build(const HexagonDesign& hexagon) { return BuildHexagon(hexagon); }
TopoDS_Shape Build(const CamDesign& cam) { return BuildCam(cam); }
TopoDS_Shape Build(std::monostate) { throw BoardError("Nothing is known of the part's body"); }

// Operations wrap their result in compounds.
TopoDS_Solid OnlySolid(const TopoDS_Shape& shape) {
  TopExp_Explorer found(shape, TopAbs_SOLID);
  if (!found.More()) throw BoardError("The part makes no solid");
  const TopoDS_Solid solid = TopoDS::Solid(found.Current());
  found.Next();
  if (found.More()) throw BoardError("The part falls into pieces");
  return solid;
}

bool IsClosed(const TopoDS_Solid& solid) {
  for (TopExp_Explorer shells(solid, TopAbs_SHELL); shells.More(); shells.Next()) {
    if (!BRep_Tool::IsClosed(shells.Current())) return false;
  }
  return true;
}

MassProperties Weigh(const TopoDS_Solid& solid) {
  GProp_GProps volume, surface;
  BRepGProp::VolumeProperties(solid, volume);
  BRepGProp::SurfaceProperties(solid, surface);
  const gp_Pnt centre = volume.CentreOfMass();
  // Its products are negative sums.
  const gp_Mat inertia = volume.MatrixOfInertia();
  MassProperties p;
  p.centerX = centre.X(), p.centerY = centre.Y(), p.centerZ = centre.Z();
  p.volume = p.mass = volume.Mass();
  p.area = surface.Mass();
  p.momentXX = inertia(1, 1), p.momentYY = inertia(2, 2), p.momentZZ = inertia(3, 3);
  p.momentXY = -inertia(1, 2), p.momentXZ = -inertia(1, 3), p.momentYZ = -inertia(2, 3);
  return p;
}

}  // namespace

void FailStep(const char* what) {
  throw BoardError(std::string("The solid modeller cannot make ") + what);
}

TopoDS_Face FaceOf(const TopoDS_Wire& outline, const TopoDS_Wire& hole, const gp_Dir& normal) {
  BRepBuilderAPI_MakeFace face(gp_Pln(gp_Pnt(), normal), outline, false);
  if (!hole.IsNull()) face.Add(TopoDS::Wire(hole.Reversed()));
  return TopoDS::Face(ShapeOf(face, "a face"));
}

// The modeller makes solids of outlines that cross themselves without a word; only its check finds
// them.
Solid BuildSolid(const Design& design) {
  const TopoDS_Shape shape = std::visit([](const auto& each) { return Build(each); }, design);
  if (shape.IsNull()) FailStep("the part");
  const TopoDS_Solid solid = OnlySolid(shape);
  if (!BRepCheck_Analyzer(solid).IsValid() || !IsClosed(solid)) {
    throw BoardError("The part's surfaces cross each other or leave a gap");
  }
  const MassProperties properties = Weigh(solid);
  if (!(properties.volume > kLeastVolume)) throw BoardError("The part has no volume");
  return {solid, properties};
}

}  // namespace drawboard
