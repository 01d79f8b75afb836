// Spur gears: the profile of one tooth, turned around the axis, extruded along x.
//
// A flank is an involute from the tip circle down to the root fillet, below the base circle a
// radial line. The fillet is the circle that touches flank and root circle.
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRep_Builder.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <GC_MakeSegment.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Circ.hxx>
#include <numbers>

#include "drawboard/BoardError.h"
#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kFlankPoints = 9;  // the spline then keeps within 1e-6 of the module
constexpr double kPrecision = 1e-7;

struct Polar {
  double radius = 0, angle = 0;
};

gp_Pnt At(const Polar& p) {
  return {0, p.radius * std::cos(p.angle), p.radius * std::sin(p.angle)};
}

// One side of a tooth, its middle at angle 0: where the flank ends, and the fillet below it.
struct Side {
  Polar flankEnd;    // where the fillet begins
  Polar filletMid;   // a point of the fillet
  double rootAngle;  // where the fillet meets the root circle
};

class ToothShape {
 public:
  explicit ToothShape(const GearDesign& gear) : gear(gear) {
    double radius = gear.filletRadius;
    const double room = kPi / gear.teeth;
    // A round bottom still needs some of the root circle between two fillets.
    for (side = SideWith(radius); side.rootAngle > kMostOfGap * room; side = SideWith(radius)) {
      radius *= 0.9;
      if (radius < 1e-3 * gear.module) throw BoardError("The gap between the teeth is too narrow");
    }
  }

  // Half the tooth's angle at a radius.
  double HalfAngle(double radius) const {
    const double pressure = radius > gear.baseRadius ? std::acos(gear.baseRadius / radius) : 0;
    return gear.toothAngle + Involute(gear.pressureAngle) - Involute(pressure);
  }

  const Side& Left() const { return side; }
  double InvoluteStart() const { return std::max(side.flankEnd.radius, gear.baseRadius); }

 private:
  static constexpr double kMostOfGap = 0.98;

  // Radius of the circle that touches the flank at this radius, and the root circle.
  double FilletAt(double radius) const {
    const double lean = std::sqrt(std::max(0.0, Square(radius) - Square(gear.baseRadius)));
    if (lean >= gear.rootRadius) return INFINITY;
    return (Square(radius) - Square(gear.rootRadius)) / (2 * (gear.rootRadius - lean));
  }

  Side SideWith(double fillet) const {
    double low = gear.rootRadius, high = gear.tipRadius;
    for (int i = 0; i < 60; ++i) {
      const double middle = (low + high) / 2;
      (FilletAt(middle) < fillet ? low : high) = middle;
    }
    const double touch = low;
    const double actual = FilletAt(touch);
    const double angle = HalfAngle(touch);
    const double pressure = touch > gear.baseRadius ? std::acos(gear.baseRadius / touch) : 0;
    // From the flank into the gap, as seen in the direction of the flank's radius.
    const double along = touch + actual * std::sin(pressure), aside = actual * std::cos(pressure);
    const double centreAngle = angle + std::atan2(aside, along);
    const double centre = std::hypot(along, aside);
    const double y = centre * std::cos(centreAngle), z = centre * std::sin(centreAngle);
    // The fillet's middle lies between its two ends as seen from its centre.
    const gp_Pnt flank = At({touch, angle}), root = At({gear.rootRadius, centreAngle});
    const double towardsY = flank.Y() + root.Y() - 2 * y, towardsZ = flank.Z() + root.Z() - 2 * z;
    const double scale = actual / std::hypot(towardsY, towardsZ);
    const double midY = y + towardsY * scale, midZ = z + towardsZ * scale;
    return {{touch, angle}, {std::hypot(midY, midZ), std::atan2(midZ, midY)}, centreAngle};
  }

  static double Square(double value) { return value * value; }

  const GearDesign& gear;
  Side side;
};

Handle(Geom_Curve) Arc(const gp_Pnt& from, const gp_Pnt& through, const gp_Pnt& to) {
  return Handle(Geom_Curve)(GC_MakeArcOfCircle(from, through, to).Value());
}

Handle(Geom_Curve) Line(const gp_Pnt& from, const gp_Pnt& to) {
  return Handle(Geom_Curve)(GC_MakeSegment(from, to).Value());
}

// The involute of the left side, from the tip down.
Handle(Geom_Curve) Flank(const ToothShape& tooth, double from, double to, double baseRadius) {
  const auto roll = [&](double radius) {
    return std::sqrt(std::max(0.0, std::pow(radius / baseRadius, 2) - 1));
  };
  const double first = roll(from), last = roll(to);
  Handle(TColgp_HArray1OfPnt) points = new TColgp_HArray1OfPnt(1, kFlankPoints);
  for (int i = 0; i < kFlankPoints; ++i) {
    const double at = first + (last - first) * i / (kFlankPoints - 1);
    const double radius = i == 0                  ? from
                          : i == kFlankPoints - 1 ? to
                                                  : baseRadius * std::hypot(1, at);
    points->SetValue(i + 1, At({radius, tooth.HalfAngle(radius)}));
  }
  GeomAPI_Interpolate spline(points, false, kPrecision);
  spline.Perform();
  if (!spline.IsDone()) FailStep("the flank of a tooth");
  return Handle(Geom_Curve)(spline.Curve());
}

// Curves of one tooth and of the root behind it, counterclockwise, each from the end of the one
// before.
std::vector<Handle(Geom_Curve)> ToothCurves(const GearDesign& gear) {
  const ToothShape tooth(gear);
  const Side& side = tooth.Left();
  const double start = tooth.InvoluteStart();
  const double tipAngle = tooth.HalfAngle(gear.tipRadius);
  const bool radial = side.flankEnd.radius < start - kPrecision;
  const Handle(Geom_Curve) left = Flank(tooth, gear.tipRadius, start, gear.baseRadius);
  const Handle(Geom_Curve) right =
      Handle(Geom_Curve)::DownCast(left->Mirrored(gp_Ax2(gp_Pnt(), gp_Dir(0, 0, 1))));
  const auto mirrored = [](const Polar& p) { return At({p.radius, -p.angle}); };
  const Polar root{gear.rootRadius, side.rootAngle};
  const Polar involute{start, tooth.HalfAngle(start)};
  const double next = 2 * kPi / gear.teeth;

  std::vector<Handle(Geom_Curve)> curves;
  curves.push_back(Arc(mirrored(root), mirrored(side.filletMid), mirrored(side.flankEnd)));
  if (radial) curves.push_back(Line(mirrored(side.flankEnd), mirrored(involute)));
  curves.push_back(right->Reversed());
  curves.push_back(Arc(At({gear.tipRadius, -tipAngle}), At({gear.tipRadius, 0}),
                       At({gear.tipRadius, tipAngle})));
  curves.push_back(left);
  if (radial) curves.push_back(Line(At(involute), At(side.flankEnd)));
  curves.push_back(Arc(At(side.flankEnd), At(side.filletMid), At(root)));
  curves.push_back(
      Arc(At(root), At({gear.rootRadius, next / 2}), At({gear.rootRadius, next - side.rootAngle})));
  return curves;
}

// The outline of all teeth. Neighbours share their vertices, so that nothing has to be searched.
TopoDS_Wire Outline(const GearDesign& gear) {
  const std::vector<Handle(Geom_Curve)> tooth = ToothCurves(gear);
  BRep_Builder builder;
  TopoDS_Wire wire;
  builder.MakeWire(wire);
  const auto vertexAt = [&](const gp_Pnt& point) {
    TopoDS_Vertex vertex;
    builder.MakeVertex(vertex, point, kPrecision);
    return vertex;
  };
  const TopoDS_Vertex first = vertexAt(tooth.front()->Value(tooth.front()->FirstParameter()));
  TopoDS_Vertex from = first;
  for (int i = 0; i < gear.teeth; ++i) {
    gp_Trsf turn;
    turn.SetRotation(gp::OX(), 2 * kPi * i / gear.teeth);
    for (std::size_t k = 0; k < tooth.size(); ++k) {
      const Handle(Geom_Curve) curve = Handle(Geom_Curve)::DownCast(tooth[k]->Transformed(turn));
      const bool closing = i + 1 == gear.teeth && k + 1 == tooth.size();
      const TopoDS_Vertex to = closing ? first : vertexAt(curve->Value(curve->LastParameter()));
      BRepBuilderAPI_MakeEdge edge(curve, from, to);
      builder.Add(wire, ShapeOf(edge, "an edge of a tooth"));
      from = to;
    }
  }
  wire.Closed(true);
  return wire;
}

// The bore, with the keyway towards z.
TopoDS_Wire Bore(const GearDesign& gear) {
  if (gear.boreRadius <= 0) return {};
  const gp_Circ circle(gp_Ax2(gp_Pnt(), gp_Dir(1, 0, 0), gp_Dir(0, 1, 0)), gear.boreRadius);
  BRepBuilderAPI_MakeWire wire;
  if (gear.seatWidth <= 0) {
    wire.Add(BRepBuilderAPI_MakeEdge(circle));
    return wire.Wire();
  }
  const double half = gear.seatWidth / 2;
  const double bottom = std::sqrt(gear.boreRadius * gear.boreRadius - half * half);
  const double top = gear.boreRadius + gear.seatDepth;
  const gp_Pnt corners[] = {{0, half, bottom}, {0, half, top}, {0, -half, top}, {0, -half, bottom}};
  for (int i = 0; i < 3; ++i) wire.Add(BRepBuilderAPI_MakeEdge(corners[i], corners[i + 1]));
  wire.Add(BRepBuilderAPI_MakeEdge(Arc(corners[3], gp_Pnt(0, 0, -gear.boreRadius), corners[0])));
  if (!wire.IsDone()) FailStep("the bore of the gear");
  return wire.Wire();
}

}  // namespace

TopoDS_Shape BuildGear(const GearDesign& gear) {
  const TopoDS_Face face = FaceOf(Outline(gear), Bore(gear), gp_Dir(1, 0, 0));
  BRepPrimAPI_MakePrism prism(face, gp_Vec(gear.width, 0, 0));
  return ShapeOf(prism, "the gear");
}

}  // namespace drawboard
