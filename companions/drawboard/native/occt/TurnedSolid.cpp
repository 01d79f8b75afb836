// Turned bodies: the half outline, revolved about x, then what is milled into it and what stands
// on it.
#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Pln.hxx>

#include "drawboard/BoardError.h"
#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace {

// How far cutters reach beyond the body, as a part of its radius.
constexpr double kReach = 1.1;

gp_Pnt On(double x, double radius) { return {x, 0, radius}; }

// A quarter of a circle: 45 degrees of it lie this far from its ends.
gp_Pnt ArcMiddle(const Station& from, const Station& to) {
  const bool rising = to.radius > from.radius;
  const double centreX = rising ? to.x : from.x;
  const double centreRadius = rising ? from.radius : to.radius;
  const double side = from.arc * std::sqrt(0.5);
  return On(centreX + (rising ? -side : side), centreRadius + side);
}

TopoDS_Shape Revolve(const TurnedDesign& body) {
  BRepBuilderAPI_MakeWire wire;
  const auto add = [&](const gp_Pnt& from, const gp_Pnt& to) {
    if (from.Distance(to) > 0) wire.Add(BRepBuilderAPI_MakeEdge(from, to));
  };
  const std::vector<Station>& line = body.line;
  const gp_Pnt begin = On(line.front().x, body.boreRadius);
  const gp_Pnt end = On(line.back().x, body.boreRadius);
  add(begin, On(line.front().x, line.front().radius));
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const gp_Pnt from = On(line[i].x, line[i].radius), to = On(line[i + 1].x, line[i + 1].radius);
    if (line[i].arc > 0) {
      wire.Add(BRepBuilderAPI_MakeEdge(
          GC_MakeArcOfCircle(from, ArcMiddle(line[i], line[i + 1]), to).Value()));
    } else {
      add(from, to);
    }
  }
  add(On(line.back().x, line.back().radius), end);
  add(end, begin);
  if (!wire.IsDone()) FailStep("the outline of the turned part");
  BRepBuilderAPI_MakeFace face(gp_Pln(gp_Pnt(), gp_Dir(0, -1, 0)), wire.Wire(), true);
  BRepPrimAPI_MakeRevol revolved(ShapeOf(face, "the outline of the turned part"), gp::OX());
  return ShapeOf(revolved, "the turned part");
}

// The plan of a seat in the plane at this height above the axis.
TopoDS_Shape Plan(const Seat& seat, double width, double height) {
  const double left = seat.middle - seat.length / 2, right = seat.middle + seat.length / 2;
  const double half = width / 2;
  const auto at = [&](double x, double y) { return gp_Pnt(x, y, height); };
  BRepBuilderAPI_MakeWire wire;
  const auto line = [&](const gp_Pnt& from, const gp_Pnt& to) {
    if (from.Distance(to) > 1e-9) wire.Add(BRepBuilderAPI_MakeEdge(from, to));
  };
  const auto arc = [&](const gp_Pnt& from, const gp_Pnt& through, const gp_Pnt& to) {
    wire.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(from, through, to).Value()));
  };
  const double inset = seat.roundEnds ? half : 0;
  line(at(left + inset, -half), at(right - inset, -half));
  if (seat.roundEnds) {
    arc(at(right - inset, -half), at(right, 0), at(right - inset, half));
  } else {
    line(at(right, -half), at(right, half));
  }
  line(at(right - inset, half), at(left + inset, half));
  if (seat.roundEnds) {
    arc(at(left + inset, half), at(left, 0), at(left + inset, -half));
  } else {
    line(at(left, half), at(left, -half));
  }
  if (!wire.IsDone()) FailStep("the outline of a keyway");
  BRepBuilderAPI_MakeFace face(gp_Pln(gp_Pnt(0, 0, height), gp_Dir(0, 0, 1)), wire.Wire(), true);
  return ShapeOf(face, "the outline of a keyway");
}

TopoDS_Shape Block(const Seat& seat, double width, double low, double high) {
  BRepPrimAPI_MakePrism prism(Plan(seat, width, low), gp_Vec(0, 0, high - low));
  return ShapeOf(prism, "a keyway");
}

// What stands on the body begins inside it, so that no two surfaces only touch.
double Foot(const Seat& seat, double bore) {
  const double edge =
      std::sqrt(std::max(0.0, seat.radius * seat.radius - seat.width * seat.width / 4));
  return (edge + std::min(bore, edge)) / 2;
}

TopoDS_Shape SplineTooth(const Seat& seat, double bore) {
  const gp_Ax2 axis(gp_Pnt(seat.middle - seat.length / 2, 0, 0), gp_Dir(1, 0, 0));
  BRepPrimAPI_MakeCylinder round(axis, seat.height, seat.length);
  round.Build();
  BRepAlgoAPI_Common tooth(Block(seat, seat.width, Foot(seat, bore), seat.height * kReach),
                           ShapeOf(round, "a spline"));
  return ShapeOf(tooth, "a spline");
}

TopoDS_Shape ToolFor(const Seat& seat, double bore) {
  const double outside = seat.radius * kReach;
  switch (seat.kind) {
    case Seat::Kind::Key:
      return Block(seat, seat.width, Foot(seat, bore), seat.height);
    case Seat::Kind::Spline:
      return SplineTooth(seat, bore);
    case Seat::Kind::Flat:
      return Block(seat, 2 * outside, seat.height, outside);
    case Seat::Kind::Hole:
      return Block(seat, seat.width, seat.height <= -seat.radius ? -outside : seat.height, outside);
    case Seat::Kind::Cut:
      break;
  }
  return Block(seat, seat.width, seat.height, outside);
}

template <typename Operation>
TopoDS_Shape Combine(const TopoDS_Shape& body, const TopTools_ListOfShape& tools,
                     const char* what) {
  if (tools.IsEmpty()) return body;
  TopTools_ListOfShape bodies;
  bodies.Append(body);
  Operation operation;
  operation.SetArguments(bodies);
  operation.SetTools(tools);
  operation.Build();
  if (operation.HasErrors()) FailStep(what);
  operation.SimplifyResult();
  return ShapeOf(operation, what);
}

}  // namespace

TopoDS_Shape BuildTurned(const TurnedDesign& body) {
  if (body.line.size() < 2) throw BoardError("The turned part has no outline");
  TopTools_ListOfShape cutters, standing;
  for (const Seat& seat : body.seats) {
    gp_Trsf turn;
    turn.SetRotation(gp::OX(), seat.turn);
    BRepBuilderAPI_Transform tool(ToolFor(seat, body.boreRadius), turn);
    const bool added = seat.kind == Seat::Kind::Key || seat.kind == Seat::Kind::Spline;
    (added ? standing : cutters).Append(ShapeOf(tool, "a keyway"));
  }
  const TopoDS_Shape cut =
      Combine<BRepAlgoAPI_Cut>(Revolve(body), cutters, "the cuts of the shaft");
  return Combine<BRepAlgoAPI_Fuse>(cut, standing, "what stands on the shaft");
}

}  // namespace drawboard
