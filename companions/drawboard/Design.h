// What a part is as a body: the dimensions that a builder needs, read from the parameters that the
// library model names. Lengths in mm, angles in radians, whatever the unit of the document.
//
// The library model chooses the kind of body:
//   SpurGear  involute teeth: z, m, alfa, x, "ha*", "c*", "rf*", da, df, b; bore dh; a keyway in
//   the
//             bore: bk wide, tk2 deep
//   Shaft     "#spiCount" elements from left to right: d, l, their type and what that type has
//             besides (ShaftDesign.cpp); bore dh; keyways and keys that stand on it as features
//   DiscCam   points of the profile, width b, bore dh
//   HexBolt   head d_1 (circle of the hexagon's area), l_1; shank d_2, l_2
//   HexNut    d_1, l_1, thread dh;    Washer  d_1, l_1, dh
// Threads are not cut: the body has the thread's outer diameter, a nut its bore.
#pragma once

#include <initializer_list>
#include <optional>
#include <variant>
#include <vector>

#include "drawboard/Kernel.h"

namespace drawboard {

inline constexpr double kMillimetresPerInch = 25.4;
// Of a cam whose parameters name no width; in the document's unit.
inline constexpr double kDefaultCamWidth = 10;

// Involute function of an angle: tan a - a.
double Involute(double angle);

struct GearDesign {
  int teeth = 0;
  double module = 0;
  double pressureAngle = 0;
  double toothAngle = 0;  // half a tooth's on the reference circle, seen from the axis
  double tipRadius = 0, baseRadius = 0, rootRadius = 0;
  double filletRadius = 0;  // at the root, as far as the gap has room for it
  double width = 0;
  double boreRadius = 0;                // 0: no bore
  double seatWidth = 0, seatDepth = 0;  // of the keyway in the bore, 0: none
  bool operator==(const GearDesign&) const = default;
};

// A place of the outer line of a turned body, left to right along x. The line to the next place is
// straight, or the arc of this radius, which bulges outwards.
struct Station {
  double x = 0, radius = 0;
  double arc = 0;
  bool operator==(const Station&) const = default;
};

// Something milled into a turned body or standing on it, seen from outside: a rectangle along the
// axis, or a slot with round ends.
struct Seat {
  enum class Kind {
    Cut,     // taken away from `height` above the axis outwards
    Flat,    // the same, across the whole body
    Hole,    // round, down to `height`; a `height` of -`radius` goes through
    Key,     // added up to the plane `height` above the axis
    Spline,  // added up to the cylinder with the radius `height`
  };
  Kind kind = Kind::Cut;
  double middle = 0, length = 0, width = 0;
  bool roundEnds = false;
  double turn = 0;    // about the axis; 0: towards z
  double height = 0;  // mm from the axis
  double radius = 0;  // of the body there
  bool operator==(const Seat&) const = default;
};

struct TurnedDesign {
  std::vector<Station> line;
  double boreRadius = 0;
  std::vector<Seat> seats;
  bool operator==(const TurnedDesign&) const = default;
};

// Bolt or nut: a hexagon along x, then the shank.
struct HexagonDesign {
  double acrossFlats = 0, height = 0;
  double shankRadius = 0, shankLength = 0, pointChamfer = 0;  // 0: a nut
  double boreRadius = 0;
  bool operator==(const HexagonDesign&) const = default;
};

// A prism along z.
struct CamDesign {
  std::vector<Point> profile;
  double width = 0;
  double boreRadius = 0;
  bool operator==(const CamDesign&) const = default;
};

using Design = std::variant<std::monostate, GearDesign, TurnedDesign, HexagonDesign, CamDesign>;

// Nothing for a library model that no builder knows and for a part that was given none of the
// dimensions of its model: such a part is made before it is calculated. Throws a BoardError, in
// words for the designer, when the dimensions describe no body.
Design ReadDesign(const PartDescription& part);
// The same, and nothing when the dimensions describe no body.
std::optional<Design> PossibleDesign(const PartDescription& part);

// The same for single kinds; `scale` makes millimetres of the document's unit.
Design ReadShaft(const PartDescription& part, double scale);

// The points of a cam's profile in the document's unit, from the driver or from the rows "l_1",
// "a_1" ... of the parameters, "cPoint" of them: lengths and angles in degrees.
std::optional<Profile> ProfileOf(const PartDescription& part);

// kg/mm3: the parameter "ro" in kg/m3, else steel.
double DensityOf(const PartDescription& part);

// Lengths of millimetres and masses of kilograms in the document's units.
MassProperties InDocumentUnits(MassProperties properties, Unit unit);

// Throws a BoardError when the condition does not hold, and when a length is beyond what is built.
void Demand(bool condition, const std::string& message);
void DemandSize(std::initializer_list<double> lengths);

}  // namespace drawboard
