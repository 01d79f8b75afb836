#include "hexaplan/calculation/ShaftElements.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "hexaplan/calculation/ParallelKey.h"

namespace hexaplan {

namespace {

constexpr double kLongest = 20000;         // mm
constexpr double kThickest = 3000;         // mm
constexpr double kRounding = 1e-6;         // of a length, what it may lose when it is stored
constexpr double kThreadDepth = 0.61343;   // pitches: ISO 68-1, thread of a bolt
constexpr double kThreadRadius = 0.14434;  // pitches, at its root

constexpr Field kDiameter{"d", "mm", 40, 1, kThickest, "diameter of the section", false, 1.5};
constexpr Field kLength{"l", "mm", 50, 0.1, kLongest, "length of the section", false, 2};
constexpr Field kFit{"fit", "ND", 0, 0, 1, "1: a hub is pressed onto the section", true};

// Edges of the section's ends; how large they are is given by kind of edge.
struct Edge {
  Field kind, chamfer, rounding;
};
constexpr Edge kEdges[] = {
    {{"#spi1Add", "ND", 0, 0, 2, "left end: 1 chamfer, 2 rounding", true},
     {"s1", "mm", 1, 0, kThickest, "chamfer of the left end", false, 0.04},
     {"s1r", "mm", 1, 0, kThickest, "rounding of the left end", false, 0.04}},
    {{"#spi2Add", "ND", 0, 0, 2, "right end: 1 chamfer, 2 rounding", true},
     {"s2", "mm", 1, 0, kThickest, "chamfer of the right end", false, 0.04},
     {"s2r", "mm", 1, 0, kThickest, "rounding of the right end", false, 0.04}},
};

// What a dimension is for, whatever its kind calls it.
enum Role { kOffset, kLong, kWide, kDeep, kBottom, kRadius, kAtLeft, kCount, kPitch, kRoles };

struct Dimension {
  Role role;
  Field field;
  bool needed = false;  // above 0
};

class Reader;

struct Kind {
  const char* name;
  void (*build)(Reader& reader);
  std::vector<Dimension> dimensions;
};

Dimension Place(const char* name) {
  return {kOffset, {name, "mm", 0, 0, kLongest, "its place from the section's left end"}};
}
Dimension Needed(Role role, const char* name, const char* meaning) {
  return {role, {name, "mm", 0, 0, kLongest, meaning}, true};
}
Dimension Optional(Role role, const char* name, const char* meaning) {
  return {role, {name, "mm", 0, 0, kThickest, meaning}};
}
Dimension Number(Role role, const char* name, double fallback, double most, const char* meaning) {
  return {role, {name, "ND", fallback, 0, most, meaning, true}};
}

// One section while it is read.
class Reader {
 public:
  Reader(Inputs& inputs, int number, double tensileStrength)
      : inputs(inputs), number(number), tensileStrength(tensileStrength) {}

  ShaftElement Read();

  void BuildPlain() {}
  void BuildUndercut();
  void BuildRecess();
  void BuildRingGroove();
  void BuildKeyway();
  void BuildThread();
  void BuildCone();
  void BuildHole();
  void BuildSpline();
  void BuildFlats();

 private:
  double Diameter() const { return element.section.diameter; }
  double Length() const { return element.section.length; }
  std::string Section() const { return "section " + std::to_string(number); }
  std::string Of(Role role) const;
  [[noreturn]] void Refuse(Role role, const std::string& why) const {
    throw InputError(Of(role), why);
  }
  bool IsMeant() const;
  void ReadDimensions();
  void RefuseOtherKinds(int type) const;
  double Fitted(Role offset, Role length) const;
  void AddGroove(double begin, double end, double bottom, double radius, Role depth);
  void AddNotch(double begin, double end, double diameter, const NotchFactors& factors,
                double radius) {
    element.notches.push_back({begin, end, diameter, factors, radius});
  }

  Inputs& inputs;
  int number;
  double tensileStrength;
  const Kind* kind = nullptr;
  double value[kRoles] = {};
  ShaftElement element;
};

template <void (Reader::*build)()>
void Build(Reader& reader) {
  (reader.*build)();
}

Kind Undercut(const char* name, const char* width, const char* depth, const char* radius,
              const char* atLeft) {
  return {
      name,
      Build<&Reader::BuildUndercut>,
      {Needed(kWide, width, "width of the undercut"), Needed(kDeep, depth, "depth of the undercut"),
       Optional(kRadius, radius, "radius in the undercut"),
       Number(kAtLeft, atLeft, 0, 1, "1: the undercut is at the left end")}};
}

Kind Recess(const char* name, const char* place, const char* length, const char* depth,
            const char* radius) {
  return {name,
          Build<&Reader::BuildRecess>,
          {Place(place), Needed(kLong, length, "length of the groove"),
           Needed(kDeep, depth, "depth of the groove"),
           Optional(kRadius, radius, "radius in the groove")}};
}

// By type number, from 1.
const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds = {
      {"plain cylinder", Build<&Reader::BuildPlain>, {}},
      {"section with a ring groove",
       Build<&Reader::BuildRingGroove>,
       {Place("RR_LR"), Needed(kWide, "RR_M", "width of the ring groove"),
        Needed(kBottom, "RR_d1", "diameter in the ring groove")}},
      {"section with a keyway",
       Build<&Reader::BuildKeyway>,
       {Place("KEY_LR"), Needed(kLong, "KEY_L", "length of the keyway"),
        Needed(kWide, "KEY_B", "width of the keyway"),
        Needed(kDeep, "KEY_T", "depth of the keyway"),
        Number(kCount, "KEY_n", 1, 4, "number of keyways around the section")}},
      {"section with a thread",
       Build<&Reader::BuildThread>,
       {Place("LW_LR"),
        Needed(kLong, "LW_L", "length of the thread with its undercut"),
        {kPitch, {"LW_TP", "mm", 1.5, 0.2, 10, "pitch of the thread"}},
        Optional(kWide, "LW_B", "width of the thread's undercut"),
        Optional(kDeep, "LW_T", "depth of the thread's undercut"),
        Optional(kRadius, "LW_R", "radius in the thread's undercut")}},
      {"cone",
       Build<&Reader::BuildCone>,
       {Needed(kBottom, "CONE_d1", "diameter of the cone's right end")}},
      Undercut("section with an undercut, form A", "NA_b", "NA_h", "NA_R", "NA_add"),
      Undercut("section with an undercut, form B", "NB_b", "NB_h", "NB_R", "NB_add"),
      Recess("section with a round groove", "ND_LR", "ND_L", "ND_h", "ND_R"),
      Undercut("section with an undercut, form F", "NF_b", "NF_h", "NF_R", "NF_add"),
      Undercut("section with an undercut, form G", "NG_b", "NG_h", "NG_R", "NG_add"),
      Undercut("section with an undercut, form DA", "NDA_b", "NDA_h", "NDA_R", "PNDA_add"),
      Undercut("section with an undercut, form DB", "NDB_b", "NDB_h", "NDB_R", "NDB_add"),
      {"section with a cross hole",
       Build<&Reader::BuildHole>,
       {Place("HOLE_LR"), Needed(kWide, "HOLE_D", "diameter of the cross hole"),
        Optional(kDeep, "HOLE_L", "depth of the cross hole, 0: through")}},
      Recess("section with a groove, form A", "RNa_LR", "RNa_L", "RNa_H", "RNa_R"),
      Recess("section with a groove, form B", "RNb_LR", "RNb_L", "RNb_H", "RNb_R"),
      {"splined section",
       Build<&Reader::BuildSpline>,
       {Number(kCount, "Pr_n", 6, 64, "number of splines"),
        Needed(kBottom, "Pr_R", "radius between the splines"),
        Needed(kWide, "Pr_X", "width of a spline")}},
      {"section with wrench flats",
       Build<&Reader::BuildFlats>,
       {Needed(kBottom, "WO_X", "distance across the flats"),
        Optional(kLong, "WO_L", "length of the flats, 0: the whole section")}},
  };
  return kinds;
}

const Field& TypeField() {
  static const Field field{
      "#spiType", "ND", 1, 1, static_cast<double>(Kinds().size()), "kind of the section", true};
  return field;
}

std::string Reader::Of(Role role) const {
  for (const Dimension& each : kind->dimensions) {
    if (each.role == role) return Numbered(each.field.name, number);
  }
  return Numbered(TypeField().name, number);
}

// Sections of protocols that come from an older layout may bear a kind without its dimensions; they
// count as plain.
bool Reader::IsMeant() const {
  return inputs.IsOrdered(Numbered(TypeField().name, number)) ||
         std::any_of(kind->dimensions.begin(), kind->dimensions.end(), [&](const auto& each) {
           return inputs.IsGiven(Numbered(each.field.name, number));
         });
}

void Reader::ReadDimensions() {
  for (const Dimension& each : kind->dimensions) {
    value[each.role] = inputs.Read(each.field, number);
  }
  const KeySection key = StandardKeyOf(Diameter(), inputs.Units() == UnitSystem::Inch);
  for (const Dimension& each : kind->dimensions) {
    if (!each.needed || value[each.role] > 0) continue;
    std::string why = std::string("give the ") + each.field.meaning + ".";
    if (kind == &Kinds()[2] && key.width > 0) {
      why += " The standard's keyway for this diameter is " +
             inputs.ShownWithUnit(key.width, "mm") + " wide and " +
             inputs.ShownWithUnit(key.shaftDepth, "mm") + " deep.";
    }
    Refuse(each.role, why);
  }
}

// A dimension of another kind would be lost without a word.
void Reader::RefuseOtherKinds(int type) const {
  for (std::size_t other = 0; other < Kinds().size(); ++other) {
    if (static_cast<int>(other) + 1 == type) continue;
    for (const Dimension& each : Kinds()[other].dimensions) {
      const std::string name = Numbered(each.field.name, number);
      if (!inputs.IsOrdered(name)) continue;
      throw InputError(name, Section() + " is a " + kind->name + "; for a " + Kinds()[other].name +
                                 " its " + TypeField().name + " is " + std::to_string(other + 1) +
                                 ".");
    }
  }
}

// The end of something that begins at its place; refused when it reaches beyond the section.
double Reader::Fitted(Role offset, Role length) const {
  const double end = value[offset] + value[length];
  if (end > Length() * (1 + kRounding)) {
    Refuse(length, "it reaches beyond " + Section() + ", which is " +
                       inputs.ShownWithUnit(Length(), "mm") + " long.");
  }
  return std::min(end, Length());
}

void Reader::AddGroove(double begin, double end, double bottom, double radius, Role depth) {
  if (bottom <= 0 || bottom >= Diameter()) {
    Refuse(depth, "it leaves a diameter of " + inputs.ShownWithUnit(bottom, "mm") + " of the " +
                      inputs.ShownWithUnit(Diameter(), "mm") + " of " + Section() + ".");
  }
  const double root = radius > 0 ? radius : kSharpRadius * bottom;
  AddNotch(begin, end, bottom, GrooveNotch(Diameter(), (Diameter() - bottom) / 2, root), root);
}

void Reader::BuildUndercut() {
  const bool atLeft = value[kAtLeft] == 1;
  const double end = Fitted(kOffset, kWide);
  const double begin = atLeft ? 0.0 : Length() - end;
  const double bottom = Diameter() - 2 * value[kDeep];
  AddGroove(begin, begin + end, bottom, value[kRadius], kDeep);
  (atLeft ? element.left : element.right) = {bottom, element.notches.back().radius};
}

void Reader::BuildRecess() {
  AddGroove(value[kOffset], Fitted(kOffset, kLong), Diameter() - 2 * value[kDeep], value[kRadius],
            kDeep);
}

void Reader::BuildRingGroove() {
  AddGroove(value[kOffset], Fitted(kOffset, kWide), value[kBottom], 0, kBottom);
  element.notches.back().factors = kRingGrooveNotch;
}

void Reader::BuildKeyway() {
  const double end = Fitted(kOffset, kLong);
  if (value[kWide] > Diameter() / 2) Refuse(kWide, "the keyway is wider than half the shaft.");
  if (value[kDeep] >= Diameter() / 2) Refuse(kDeep, "the keyway reaches the shaft's axis.");
  AddNotch(value[kOffset], end, Diameter(), kKeywayNotch, kSharpRadius * Diameter());
}

void Reader::BuildThread() {
  const double end = Fitted(kOffset, kLong);
  const double core = Diameter() - 2 * kThreadDepth * value[kPitch];
  AddGroove(value[kOffset], end, core, kThreadRadius * value[kPitch], kPitch);
  if (value[kWide] == 0 || value[kDeep] == 0) return;
  if (value[kWide] > value[kLong]) Refuse(kWide, "the undercut is longer than the thread.");
  const double bottom = Diameter() - 2 * value[kDeep];
  AddGroove(end - value[kWide], end, bottom, value[kRadius], kDeep);
  if (end == Length()) element.right = {bottom, element.notches.back().radius};
}

void Reader::BuildCone() {
  if (value[kBottom] > kThickest) Refuse(kBottom, "the cone is too thick.");
  element.section.endDiameter = value[kBottom];
}

void Reader::BuildHole() {
  if (value[kWide] > Diameter() / 2) Refuse(kWide, "the hole is wider than half the shaft.");
  const double x = value[kOffset];
  if (x < value[kWide] / 2 || x > Length() - value[kWide] / 2) {
    Refuse(kOffset, "the hole does not lie within " + Section() + ".");
  }
  AddNotch(x, x, Diameter(), CrossHoleNotch(Diameter(), value[kWide]), value[kWide] / 2);
}

// A spline's root counts as that of a keyway, on the body between the splines.
void Reader::BuildSpline() {
  const double core = 2 * value[kBottom];
  if (core >= Diameter()) Refuse(kBottom, "the splines do not stand out.");
  if (value[kCount] < 2 || value[kCount] * value[kWide] >= std::numbers::pi * core) {
    Refuse(kCount, "so many splines leave no room between them, or are no splines.");
  }
  AddNotch(0, Length(), core, kKeywayNotch, kSharpRadius * core);
}

// The flats' ends are shoulders of the round bar that fits between them.
void Reader::BuildFlats() {
  const double across = value[kBottom];
  const double length = value[kLong] > 0 ? Fitted(kOffset, kLong) : Length();
  if (across >= Diameter()) Refuse(kBottom, "the flats are not within the section.");
  const double begin = (Length() - length) / 2;
  const double radius = kSharpRadius * across;
  AddNotch(begin, begin + length, across, ShoulderNotch(Diameter(), across, radius), radius);
}

ShaftElement Reader::Read() {
  const int type = static_cast<int>(inputs.Read(TypeField(), number));
  kind = &Kinds()[static_cast<std::size_t>(type) - 1];
  element.section.diameter = inputs.Read(kDiameter, number);
  element.section.length = inputs.Read(kLength, number);
  RefuseOtherKinds(type);
  if (IsMeant()) {
    ReadDimensions();
    kind->build(*this);
  }
  for (const Edge& edge : kEdges) {
    if (!inputs.IsGiven(Numbered(edge.kind.name, number))) continue;
    const int which = static_cast<int>(inputs.Read(edge.kind, number));
    if (which > 0) inputs.Read(which == 1 ? edge.chamfer : edge.rounding, number);
  }
  if (inputs.IsGiven(Numbered(kFit.name, number)) && inputs.Read(kFit, number) == 1) {
    AddNotch(0, Length(), std::min(Diameter(), element.section.EndDiameter()),
             PressFitNotch(tensileStrength), 0);
  }
  return std::move(element);
}

// All fields of sections, each once.
template <typename Visit>
void VisitFields(const Visit& visit) {
  visit(TypeField(), "");
  for (const Field* field : {&kDiameter, &kLength, &kFit}) visit(*field, "");
  for (const Edge& edge : kEdges) {
    for (const Field* field : {&edge.kind, &edge.chamfer, &edge.rounding}) visit(*field, "");
  }
  for (const Kind& kind : Kinds()) {
    for (const Dimension& each : kind.dimensions) visit(each.field, kind.name);
  }
}

}  // namespace

std::string Numbered(const char* name, int number) {
  return std::string(name) + "_" + std::to_string(number);
}

ShaftElement ReadShaftElement(Inputs& inputs, int number, double tensileStrength) {
  return Reader(inputs, number, tensileStrength).Read();
}

std::vector<std::string> ElementFieldNames() {
  std::vector<std::string> names;
  VisitFields([&](const Field& field, const char*) { names.emplace_back(field.name); });
  return names;
}

std::vector<ValueNote> ElementNotes() {
  std::vector<ValueNote> notes;
  VisitFields([&](const Field& field, const std::string& kind) {
    notes.push_back({std::string(field.name) + "_i",
                     kind.empty() ? field.meaning : kind + ": " + field.meaning});
  });
  return notes;
}

}  // namespace hexaplan
