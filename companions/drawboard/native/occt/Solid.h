// Solids of the designs. Builders throw a BoardError or what the modeller throws; `OcctSolids` is
// the border where all of it ends.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Wire.hxx>
#include <string>
#include <vector>

#include "drawboard/native/SolidLibrary.h"

namespace drawboard {

TopoDS_Shape BuildGear(const GearDesign& gear);
TopoDS_Shape BuildTurned(const TurnedDesign& body);
TopoDS_Shape BuildHexagon(const HexagonDesign& hexagon);
TopoDS_Shape BuildCam(const CamDesign& cam);

// A solid and its properties, with a material of 1 kg/mm3.
struct Solid {
  TopoDS_Solid shape;
  MassProperties properties;
};

// The one solid of a design, checked: valid, closed, with a volume.
Solid BuildSolid(const Design& design);

// Contents of the files of one part; the STEP file names it and bears a fixed time.
std::string StepOf(const TopoDS_Solid& solid, const Design& design, const std::string& name);
std::string GlbOf(const TopoDS_Solid& solid, const Design& design, const std::string& name);
// Isometric view without hidden lines, in millimetres.
std::string SvgOf(const TopoDS_Solid& solid, const std::string& name);

// A body of an assembly with its solid.
struct PlacedSolid {
  AssemblyBody body;
  TopoDS_Solid solid;
};
ExchangeFiles AssemblyOf(const std::vector<PlacedSolid>& parts, const std::string& name);

// The face of a plane outline with at most one hole; both run counterclockwise seen against the
// plane's normal, which is the direction in which the face is to be swept.
TopoDS_Face FaceOf(const TopoDS_Wire& outline, const TopoDS_Wire& hole, const gp_Dir& normal);

// The shape of a finished operation. Throws a BoardError when it failed or made nothing.
template <typename Operation>
TopoDS_Shape ShapeOf(Operation& operation, const char* what);
[[noreturn]] void FailStep(const char* what);

template <typename Operation>
TopoDS_Shape ShapeOf(Operation& operation, const char* what) {
  if (!operation.IsDone()) FailStep(what);
  TopoDS_Shape shape = operation.Shape();
  if (shape.IsNull()) FailStep(what);
  return shape;
}

SolidLibrary& OcctSolids();

}  // namespace drawboard
