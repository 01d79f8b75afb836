// What the CAD needs of geometry: how much a part weighs and which outline it has. One interface
// whatever stands behind it, closed formulas or a solid modeller.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "drawboard/ListText.h"

namespace drawboard {

enum class Unit { Millimetre, Inch };

// A cam's profile: points as the calculation gives them, in the base unit.
struct Profile {
  std::vector<double> first;
  std::vector<double> second;
  double baseValue = 0;
  std::string baseUnit;
  bool operator==(const Profile&) const = default;
};

// What a part is made from.
struct PartDescription {
  NamedTexts parameters;
  std::optional<Profile> profile;
  Unit unit = Unit::Millimetre;
};

// Lengths in the unit of the document; mass in kg for millimetres and lb for inches. Moments of
// inertia are those about the centre of mass; products of inertia are positive sums of x*y*dm.
struct MassProperties {
  double centerX = 0, centerY = 0, centerZ = 0;
  double volume = 0, area = 0, mass = 0;
  double momentXX = 0, momentYY = 0, momentZZ = 0;
  double momentXY = 0, momentXZ = 0, momentYZ = 0;
};

struct Point {
  double x = 0, y = 0;
};

// Closed outlines of a view along z, in the unit of the document.
using Outlines = std::vector<std::vector<Point>>;

class Kernel {
 public:
  virtual ~Kernel() = default;
  // Nothing when the parameters describe no body that this kernel can build.
  virtual std::optional<MassProperties> Weigh(const PartDescription& part) const = 0;
  virtual Outlines Draw(const PartDescription& part) const = 0;
  // Dimensions measured on the built part, "name", "value".
  virtual NamedTexts Measure(const PartDescription& part) const = 0;
};

// Closed formulas: bodies of revolution about x for shafts and gears, prisms for cams.
std::unique_ptr<Kernel> MakeFormulaKernel();

}  // namespace drawboard
