#include "conversion/ParameterConverter.h"

#include <span>

#include "base/Texts.h"
#include "conversion/SureRead.h"

namespace quillmar {
namespace {

enum class Action {
  Clear,       // empties `from`
  Move,        // empties `from` and writes `to`
  CopyInteger  // writes `to` with the leading integer of `from`, which stays
};

// A change of one data parameter; it is left out when `from` cannot be read.
struct Change {
  Action action;
  const char* from;
  const char* to = nullptr;
};

constexpr Change kDefaultDown[] = {{Action::Clear, "xxDimIncrement"}};

constexpr Change kGear1Up[] = {{Action::CopyInteger, "IT", "stupenPresnosti"}};
constexpr Change kGear1Down[] = {
    {Action::Clear, "gama"},       {Action::Move, "stupenPresnosti", "IT"},
    {Action::Clear, "deltaAlfa1"}, {Action::Clear, "deltaAlfa2"},
    {Action::Clear, "Fa1"},        {Action::Clear, "Fa2"},
};

constexpr Change kGear2Up[] = {{Action::Move, "cas", "cs"}};
constexpr Change kGear2Down[] = {
    {Action::Move, "cs", "cas"}, {Action::Clear, "snm1"},   {Action::Clear, "snm2"},
    {Action::Clear, "bNavrh"},   {Action::Clear, "mNavrh"}, {Action::Clear, "cMax"},
    {Action::Clear, "co1"},      {Action::Clear, "co2"},    {Action::Clear, "cd1"},
    {Action::Clear, "cd2"},      {Action::Clear, "pk"},     {Action::Clear, "Fa1"},
    {Action::Clear, "Fa2"},
};

constexpr Change kGear3Up[] = {{Action::Move, "has", "ha*"}, {Action::Move, "cas", "c*"}};
constexpr Change kGear3Down[] = {
    {Action::Move, "ha*", "has"}, {Action::Move, "c*", "cas"}, {Action::Clear, "flagB1"},
    {Action::Clear, "flagB2"},    {Action::Clear, "dw1"},      {Action::Clear, "hs1"},
    {Action::Clear, "hs2"},       {Action::Clear, "ha2"},      {Action::Clear, "hf2"},
    {Action::Clear, "sigmaF"},    {Action::Clear, "sigmaH"},   {Action::Clear, "xxDimIncrement"},
};

struct KindChanges {
  ConverterKind kind;
  std::span<const Change> up;
  std::span<const Change> down;
};

constexpr KindChanges kKindChanges[] = {
    {ConverterKind::Default, {}, kDefaultDown},
    {ConverterKind::Gear1, kGear1Up, kGear1Down},
    {ConverterKind::Gear2, kGear2Up, kGear2Down},
    {ConverterKind::Gear3, kGear3Up, kGear3Down},
};

// A parameter that was cleared may still be there, empty. Where the other name has the value, it
// was moved by a conversion that did not get to its end; done again, that one must not empty it.
bool WasMoved(VXProtocol& protocol, const Change& change, const std::string& value,
              const std::string& unit) {
  if (!value.empty() || !unit.empty()) return false;
  std::string movedValue;
  std::string movedUnit;
  return ReadSurely(protocol, change.to, movedValue, movedUnit) &&
         !(movedValue.empty() && movedUnit.empty());
}

// The value is nowhere in the store between the two writes: it goes back when the second one fails.
bool Move(VXProtocol& protocol, const Change& change, const std::string& value,
          const std::string& unit) {
  if (WasMoved(protocol, change, value, unit)) return true;
  if (!protocol.PutDataParam(change.from, "", "")) return false;
  if (protocol.PutDataParam(change.to, value, unit)) return true;
  protocol.PutDataParam(change.from, value, unit);
  return false;
}

bool Apply(VXProtocol& protocol, const Change& change) {
  std::string value;
  std::string unit;
  if (!ReadSurely(protocol, change.from, value, unit)) return true;
  switch (change.action) {
    case Action::Clear:
      return protocol.PutDataParam(change.from, "", "");
    case Action::Move:
      return Move(protocol, change, value, unit);
    case Action::CopyInteger:
      return protocol.PutDataParam(change.to, std::to_string(ParseInt(value)), unit);
  }
  return true;
}

const KindChanges& ChangesOf(ConverterKind kind) {
  for (const KindChanges& row : kKindChanges) {
    if (row.kind == kind) return row;
  }
  return kKindChanges[0];
}

}  // namespace

ParameterConverter::ParameterConverter(ConverterKind converterKind, VXProtocol& converted,
                                       const ProtocolConverter& owner, Protocols& further)
    : LayoutConverter(converterKind, converted, owner, further), kind(converterKind) {}

int ParameterConverter::Convert(int fromMajor, int toMajor, int fromMinor, int toMinor) {
  bool converted = ConvertMajor(fromMajor, toMajor, toMinor);
  if (fromMajor == kCurrentMajor && toMajor == kCurrentMajor) {
    converted = ConvertMinor(fromMinor, toMinor);
  }
  if (converted) MapViewKey(fromMajor, toMajor);
  return 1;
}

bool ParameterConverter::ConvertMajor(int fromMajor, int toMajor, int toMinor) {
  const bool up = fromMajor == kOldMajor && toMajor == kCurrentMajor;
  const bool down = fromMajor == kCurrentMajor && toMajor == kOldMajor;
  if (!up && !down) return false;
  const KindChanges& changes = ChangesOf(kind);
  for (const Change& change : up ? changes.up : changes.down) {
    if (!Apply(protocol, change)) return false;
  }
  return protocol.SetVersion(toMajor, toMinor);
}

bool ParameterConverter::ConvertMinor(int, int) { return false; }

}  // namespace quillmar
