// What the CAD needs of geometry: how much a part weighs, which outline it has, files that show it.
// One interface whatever stands behind it, closed formulas or a solid modeller.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawboard/ListText.h"

namespace drawboard {

class FacetBody;

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
  // The body itself, where it came in a model file; dimensions then say nothing.
  std::shared_ptr<const FacetBody> facets = {};
  Unit unit = Unit::Millimetre;
  std::string model;  // library model without folder and extension, in lower case
  NamedTexts featureStates;
  std::vector<PartDescription> features;  // that stand on the part
  bool operator==(const PartDescription&) const = default;
};

// Contents of files by which other programs show a part or an assembly. One that is empty is not
// made.
struct ExchangeFiles {
  std::string step;
  std::string glb;
  std::string svg;
};

// A part of an assembly.
struct Instance {
  std::string part;  // name of what it is an instance of, as its own files bear it; UTF-8
  std::string name;  // its own
  PartDescription description;
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
  bool operator==(const Point&) const = default;
};

// Closed outlines of a view along z, in the unit of the document.
using Outlines = std::vector<std::vector<Point>>;

class Kernel {
 public:
  virtual ~Kernel() = default;
  // Throws a BoardError that says why when the part is one that the kernel knows how to build and
  // its dimensions make no body.
  virtual void Check(const PartDescription& part) const = 0;
  // Nothing when the parameters describe no body that this kernel can build.
  virtual std::optional<MassProperties> Weigh(const PartDescription& part) const = 0;
  virtual Outlines Draw(const PartDescription& part) const = 0;
  // Dimensions measured on the built part, "name", "value".
  virtual NamedTexts Measure(const PartDescription& part) const = 0;
  // Files of one part, whose name they bear; nothing when this kernel makes none of it. The same
  // part gives the same bytes.
  virtual std::optional<ExchangeFiles> Export(const PartDescription& part,
                                              const std::string& name) const = 0;
  // Files of all parts together, each instance beside the one before it; an SVG is not among them.
  virtual std::optional<ExchangeFiles> ExportAssembly(const std::vector<Instance>& instances,
                                                      const std::string& name) const = 0;
};

// Closed formulas: bodies of revolution about x for shafts and gears, prisms for cams. Makes no
// files.
std::unique_ptr<Kernel> MakeFormulaKernel();

// The kernel of this target. Native: solids, built by a library that lies in the add-in's folder,
// and formulas for what it does not know. Windows: formulas.
std::unique_ptr<Kernel> MakeKernel(const std::string& addinFolder);

}  // namespace drawboard
