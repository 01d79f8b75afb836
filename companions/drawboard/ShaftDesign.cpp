// Shafts: elements from left to right, each a cylinder or a cone with what its type has besides.
//
// Places "..._LR" are those of the feature's left end from the element's left end. Undercuts stand
// at the element's right end, or at its left one where "..._add" is 1. Radii in the corners of
// grooves are left out. A thread is its outer cylinder with the undercut behind it.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawboard/BoardError.h"
#include "drawboard/Design.h"
#include "drawboard/Numbers.h"

namespace drawboard {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMostElements = 200;
// Types of elements that stand in no table below.
constexpr int kSnapRing = 2;
constexpr int kKeyway = 3;
constexpr int kThread = 4;
constexpr int kCone = 5;
constexpr int kHole = 13;
constexpr int kSpline = 16;
constexpr int kWrenchFlat = 17;
constexpr int kMostAround = 64;  // keyways or splines around an element
// A shaft's ends are broken by this part of their diameter, in steps, where its model says so.
constexpr double kEndChamfer = 0.05;
constexpr double kChamferStep = 0.5;
// Kinds of an element's end.
constexpr int kChamferedEnd = 1;
constexpr int kRoundedEnd = 2;

struct Element {
  int number = 0;
  double begin = 0, length = 0;
  double left = 0, right = 0;  // radii
  double End() const { return begin + length; }
};

struct Groove {
  double begin = 0, end = 0, radius = 0;
};

// Undercuts at an end of an element, and grooves at a place of it.
struct UndercutNames {
  int type;
  const char *width, *depth, *atLeft;
};
constexpr UndercutNames kUndercuts[] = {
    {6, "na_b", "na_h", "na_add"},      {7, "nb_b", "nb_h", "nb_add"},
    {9, "nf_b", "nf_h", "nf_add"},      {10, "ng_b", "ng_h", "ng_add"},
    {11, "nda_b", "nda_h", "pnda_add"}, {12, "ndb_b", "ndb_h", "ndb_add"},
};
struct RecessNames {
  int type;
  const char *offset, *length, *depth;
};
constexpr RecessNames kRecesses[] = {
    {8, "nd_lr", "nd_l", "nd_h"},
    {14, "rna_lr", "rna_l", "rna_h"},
    {15, "rnb_lr", "rnb_l", "rnb_h"},
};

// One shaft while it is read.
class ShaftReader {
 public:
  ShaftReader(const PartDescription& part, double scale)
      : part(part), numbers(part.parameters), scale(scale) {}

  Design Read();

 private:
  double Length(const std::string& name, int row) const {
    return numbers.OfRow(name, row, 0) * scale;
  }
  int Whole(const std::string& name, int row) const {
    return static_cast<int>(std::clamp(numbers.OfRow(name, row, 0), -1e6, 1e6));
  }
  std::string Name(const Element& element) const {
    return "element " + std::to_string(element.number) + " of the shaft";
  }

  int CountElements() const;
  void ReadElement(Element& element);
  void AddElement(const Element& element);
  void AddStation(Station station);
  Groove GrooveOf(const Element& element) const;
  Groove Cut(const Element& element, double offset, double length, double radius) const;
  void AddSeats(const Element& element);
  void AddKeyways(const Element& element);
  void AddHole(const Element& element);
  void AddSplines(const Element& element);
  void AddFlats(const Element& element);
  void AddFeature(const PartDescription& feature);
  const Element& ElementFor(double place, double radius) const;
  void PutSeat(const Element& element, Seat seat);
  double EndOf(const Element& element, bool left) const;
  bool IsRounded(const Element& element, bool left) const;

  const PartDescription& part;
  Numbers numbers;
  double scale;
  std::vector<Element> elements;
  TurnedDesign shaft;
};

// Older models have no count: rows until one is missing.
int ShaftReader::CountElements() const {
  int count = 0;
  while (count < kMostElements && (numbers.Of("d_" + std::to_string(count + 1)) ||
                                   numbers.Of("l_" + std::to_string(count + 1)))) {
    ++count;
  }
  const double given = numbers.Or("#spicount", count);
  return static_cast<int>(std::clamp(given, 0.0, static_cast<double>(count)));
}

void ShaftReader::ReadElement(Element& element) {
  const int row = element.number;
  element.length = Length("l", row);
  element.left = element.right = Length("d", row) / 2;
  if (Whole("#spitype", row) == kCone) {
    element.right = numbers.OfRow("cone_d1", row, 2 * element.left / scale) * scale / 2;
  }
  Demand(element.left > 0 && element.right > 0,
         "The diameter of " + Name(element) + " is not above 0");
  Demand(element.length > 0, "The length of " + Name(element) + " is not above 0");
  DemandSize({element.length, element.left, element.right});
  Demand(std::min(element.left, element.right) > shaft.boreRadius,
         "The bore is not smaller than " + Name(element));
}

void ShaftReader::AddStation(Station station) {
  if (!shaft.line.empty()) {
    Station& last = shaft.line.back();
    if (last.x == station.x && last.radius == station.radius) {
      last.arc = station.arc;
      return;
    }
  }
  shaft.line.push_back(station);
}

Groove ShaftReader::Cut(const Element& element, double offset, double length, double radius) const {
  const double begin = element.begin + std::clamp(offset, 0.0, element.length);
  const double end = std::min(begin + std::max(length, 0.0), element.End());
  Demand(radius > shaft.boreRadius && radius > 0,
         "The groove in " + Name(element) + " leaves no material");
  return {begin, end, radius};
}

// The grooves that stand in one place all around. Splines are one too: between them the body is
// their bottom.
Groove ShaftReader::GrooveOf(const Element& e) const {
  const int row = e.number, type = Whole("#spitype", row);
  for (const UndercutNames& names : kUndercuts) {
    if (names.type != type) continue;
    const double width = Length(names.width, row);
    const double offset = Whole(names.atLeft, row) == 1 ? 0 : e.length - width;
    return Cut(e, offset, width, e.left - Length(names.depth, row));
  }
  for (const RecessNames& names : kRecesses) {
    if (names.type != type) continue;
    return Cut(e, Length(names.offset, row), Length(names.length, row),
               e.left - Length(names.depth, row));
  }
  switch (type) {
    case kSnapRing:
      if (Length("rr_d1", row) == 0) return {};
      return Cut(e, Length("rr_lr", row), Length("rr_m", row), Length("rr_d1", row) / 2);
    case kThread: {
      const double width = Length("lw_b", row);
      return Cut(e, Length("lw_lr", row) + Length("lw_l", row) - width, width,
                 e.left - Length("lw_t", row));
    }
    case kSpline: {
      const double bottom = Length("pr_r", row);
      return bottom > 0 ? Groove{e.begin, e.End(), bottom} : Groove{};
    }
    default:
      return {};
  }
}

// Size of the broken or rounded edge at an end of an element, 0 for a sharp one.
double ShaftReader::EndOf(const Element& element, bool left) const {
  const int row = element.number;
  const bool outer = left ? row == 1 : static_cast<std::size_t>(row) == elements.size();
  const double radius = left ? element.left : element.right;
  double size = 0;
  switch (Whole(left ? "#spi1add" : "#spi2add", row)) {
    case kChamferedEnd:
      size = Length(left ? "s1" : "s2", row);
      break;
    case kRoundedEnd:
      size = Length(left ? "s1r" : "s2r", row);
      break;
    default: {
      const std::string* state = FindText(part.featureStates, "EndChamfers");
      if (!outer || state == nullptr || *state != "1") return 0;
      size = std::max(std::floor(2 * kEndChamfer * radius / kChamferStep), 1.0) * kChamferStep;
      return std::min(
          {size, 2 * kEndChamfer * radius, element.length / 4, (radius - shaft.boreRadius) / 2});
    }
  }
  Demand(
      size >= 0 && size < element.length / 2 && radius - size > shaft.boreRadius,
      "An edge of " + FormatNumber(size / scale) + " does not fit at the end of " + Name(element));
  return size;
}

bool ShaftReader::IsRounded(const Element& element, bool left) const {
  return Whole(left ? "#spi1add" : "#spi2add", element.number) == kRoundedEnd;
}

void ShaftReader::AddElement(const Element& e) {
  const Groove groove = GrooveOf(e);
  const bool grooved = groove.end > groove.begin && groove.radius < e.left;
  const bool openLeft = grooved && groove.begin <= e.begin;
  const bool openRight = grooved && groove.end >= e.End();
  const double first = openLeft ? 0 : EndOf(e, true), last = openRight ? 0 : EndOf(e, false);
  if (!openLeft) {
    if (first > 0) AddStation({e.begin, e.left - first, IsRounded(e, true) ? first : 0});
    AddStation({e.begin + first, e.left});
  }
  if (grooved) {
    Demand((openLeft || groove.begin >= e.begin + first) &&
               (openRight || groove.end <= e.End() - last),
           "The groove in " + Name(e) + " meets the edge of its end");
    if (!openLeft) AddStation({groove.begin, e.left});
    AddStation({groove.begin, groove.radius});
    AddStation({groove.end, groove.radius});
    if (!openRight) AddStation({groove.end, e.left});
  }
  if (!openRight) {
    AddStation({e.End() - last, e.right, last > 0 && IsRounded(e, false) ? last : 0});
    if (last > 0) AddStation({e.End(), e.right - last});
  }
}

void ShaftReader::PutSeat(const Element& element, Seat seat) {
  const bool standing = seat.kind == Seat::Kind::Key || seat.kind == Seat::Kind::Spline;
  Demand(seat.length > 0 && seat.width > 0,
         "What is to be cut into " + Name(element) + " has no length or width");
  Demand(seat.middle - seat.length / 2 >= element.begin - 1e-9 &&
             seat.middle + seat.length / 2 <= element.End() + 1e-9,
         "A length of " + FormatNumber(seat.length / scale) + " does not fit into " +
             Name(element) + ", which is " + FormatNumber(element.length / scale) + " long");
  Demand(seat.width < 2 * seat.radius, "What is to be cut into " + Name(element) + " is too wide");
  if (standing) {
    Demand(seat.height > seat.radius, "What stands on " + Name(element) + " does not stand out");
  } else {
    const bool through = seat.kind == Seat::Kind::Hole && seat.height <= -seat.radius;
    Demand(through ? shaft.boreRadius == 0 : seat.height > shaft.boreRadius,
           "What is to be cut into " + Name(element) + " is too deep");
    Demand(seat.height < seat.radius, "What is to be cut into " + Name(element) + " has no depth");
  }
  shaft.seats.push_back(seat);
}

void ShaftReader::AddKeyways(const Element& e) {
  Seat seat;
  seat.length = Length("key_l", e.number);
  seat.width = Length("key_b", e.number);
  const double depth = Length("key_t", e.number);
  if (seat.length == 0 || seat.width == 0 || depth == 0) return;
  seat.middle = e.begin + Length("key_lr", e.number) + seat.length / 2;
  seat.roundEnds = seat.length > seat.width;
  seat.radius = e.left;
  seat.height = e.left - depth;
  const int count = std::clamp(Whole("key_n", e.number), 1, kMostAround);
  for (int i = 0; i < count; ++i) {
    seat.turn = 2 * kPi * i / count;
    PutSeat(e, seat);
  }
}

void ShaftReader::AddHole(const Element& e) {
  const double diameter = Length("hole_d", e.number), depth = Length("hole_l", e.number);
  if (diameter == 0) return;
  Seat seat;
  seat.kind = Seat::Kind::Hole;
  seat.length = seat.width = diameter;
  seat.roundEnds = true;
  seat.middle = e.begin + Length("hole_lr", e.number);
  seat.radius = e.left;
  seat.height = depth > 0 && depth < 2 * e.left ? e.left - depth : -e.left;
  PutSeat(e, seat);
}

void ShaftReader::AddSplines(const Element& e) {
  const double bottom = Length("pr_r", e.number), width = Length("pr_x", e.number);
  const int count = Whole("pr_n", e.number);
  if (bottom <= 0 || bottom >= e.left || width <= 0 || count < 2) return;
  Demand(count <= kMostAround && count * width < 2 * kPi * bottom,
         "The splines of " + Name(e) + " leave no room between them");
  for (int i = 0; i < count; ++i) {
    PutSeat(e, {Seat::Kind::Spline, e.begin + e.length / 2, e.length, width, false,
                2 * kPi * i / count, e.left, bottom});
  }
}

void ShaftReader::AddFlats(const Element& e) {
  const double across = Length("wo_x", e.number), length = Length("wo_l", e.number);
  if (across <= 0 || across >= 2 * e.left) return;
  Seat seat;
  seat.kind = Seat::Kind::Flat;
  seat.length = length > 0 ? length : e.length;
  seat.middle = e.begin + e.length / 2;
  seat.height = across / 2;
  seat.radius = e.left;
  seat.width = 2 * std::sqrt(e.left * e.left - seat.height * seat.height);
  for (const double turn : {0.0, kPi}) {
    seat.turn = turn;
    PutSeat(e, seat);
  }
}

void ShaftReader::AddSeats(const Element& element) {
  switch (Whole("#spitype", element.number)) {
    case kKeyway:
      AddKeyways(element);
      break;
    case kHole:
      AddHole(element);
      break;
    case kSpline:
      AddSplines(element);
      break;
    case kWrenchFlat:
      AddFlats(element);
      break;
    default:
      break;
  }
}

// A key without a place stands in the middle of the first element of its diameter.
const Element& ShaftReader::ElementFor(double place, double radius) const {
  const auto fits = [&](const Element& e) {
    return place > 0 ? e.begin <= place && place < e.End()
                     : std::abs(e.left - radius) < 1e-6 * radius;
  };
  const auto found = std::find_if(elements.begin(), elements.end(), fits);
  Demand(found != elements.end(), "The shaft has no element for the keyway");
  return *found;
}

// A keyway that is cut into the shaft, or a key that is left standing on it.
void ShaftReader::AddFeature(const PartDescription& feature) {
  const Numbers key(feature.parameters);
  const bool standing = feature.model == "shaftkey";
  if ((!standing && feature.model != "keyway") || !key.Of("bk")) return;
  const double place = key.Or("x", 0) * scale;
  const Element& element = ElementFor(place, key.Or("d1", 0) * scale / 2);
  const double depth = key.Or("tk", 0) * scale;
  Demand(depth > 0, "The keyway has no depth");
  Seat seat;
  seat.kind = standing ? Seat::Kind::Key : Seat::Kind::Cut;
  seat.middle = place > 0 ? place : element.begin + element.length / 2;
  seat.length = key.Or("lk", 0) * scale;
  seat.width = key.Or("bk", 0) * scale;
  seat.roundEnds = key.Or("form", 1) == 1 && seat.length > seat.width;
  seat.radius = element.left;
  seat.height = element.left - depth + (standing ? key.Or("hk", 0) * scale : 0);
  PutSeat(element, seat);
}

Design ShaftReader::Read() {
  const int count = CountElements();
  if (count == 0) return {};
  shaft.boreRadius = std::max(0.0, numbers.Or("dh", 0)) * scale / 2;
  double begin = 0;
  for (int number = 1; number <= count; ++number) {
    Element& element = elements.emplace_back();
    element.number = number;
    element.begin = begin;
    ReadElement(element);
    begin = element.End();
  }
  for (const Element& element : elements) {
    AddElement(element);
    AddSeats(element);
  }
  for (const PartDescription& feature : part.features) AddFeature(feature);
  return shaft;
}

}  // namespace

Design ReadShaft(const PartDescription& part, double scale) {
  return ShaftReader(part, scale).Read();
}

}  // namespace drawboard
