// What a calculation reads and writes: named numbers with units. Inputs come from the order that
// somebody gave for this run, else from the protocol, else from the field's default.
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "hexaplan/calculation/Units.h"

namespace hexaplan {

// A named value as a protocol and the CAD carry it. Dimensionless values have the unit "ND".
struct DataParameter {
  std::string name;
  std::string value;
  std::string unit;
};

// One input of a calculation with the values that make sense for it, limits included, in the metric
// unit.
struct Field {
  const char* name;
  const char* unit;
  double fallback;
  double least;
  double most;
  const char* meaning;
  bool whole = false;
  double inchFallback = 0;  // in the unit of a calculation in inches; 0: what `fallback` comes to
};

// A field of every calculation: the units of its other values.
inline constexpr Field kUnits{"units", "ND", 0, 0, 1, "0: millimetres, 1: inches", true};

// The user's values cannot be calculated; the text names the field and says why.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  InputError(const std::string& field, const std::string& why)
      : std::runtime_error("Field \"" + field + "\": " + why) {}
};

// Names of fields match without regard to case, as they do in a protocol.
struct NameLess {
  bool operator()(const std::string& left, const std::string& right) const;
};

// A number as it is written into protocols and texts: at most 8 significant digits.
std::string NumberText(double value);

// Reads a decimal number with "." or "," as its decimal sign and blanks around it; false when the
// text is anything else.
bool ParseNumber(std::string_view text, double& value);

class Inputs {
 public:
  // What the protocol holds, in the unit that it bears there; an empty text counts as missing.
  void SetStored(const std::string& name, const std::string& text, const std::string& unit = {});
  // What was ordered for this run, in the units of this run; stands above what is stored.
  void SetOrdered(const std::string& name, const std::string& text);

  // Reads the field "units" and takes the values of this run in these units. Comes before all
  // other fields.
  void ChooseUnits();
  UnitSystem Units() const { return units; }

  bool IsGiven(const std::string& name) const;
  bool IsOrdered(const std::string& name) const { return ordered.count(name) != 0; }

  // The value of a field in its metric unit; as it was given it becomes part of the parameters
  // read. Throws InputError for a text that is no number or lies outside the field's limits.
  double Read(const Field& field) { return Read(field, field.name); }
  int ReadWhole(const Field& field) { return static_cast<int>(Read(field)); }
  // The same for a field of a numbered row, "<name>_<number>".
  double Read(const Field& field, int number);

  // Replaces the value of a field that was read, or adds it.
  void Replace(const Field& field, double value);

  // A metric value as a text in the units of this run, without the unit's name.
  std::string Shown(double value, const char* unit) const;
  // The same with the unit's name.
  std::string ShownWithUnit(double value, const char* unit) const;

  // Everything read so far, in the order of reading.
  const std::vector<DataParameter>& Parameters() const { return parameters; }

  // Throws InputError for the first ordered name that the calculation did not ask for.
  void RefuseUnknown(const std::string& calculationName) const;

 private:
  struct StoredText {
    std::string text;
    std::string unit;
  };

  double Read(const Field& field, const std::string& name);
  std::string LimitsText(const Field& field) const;

  UnitSystem units = UnitSystem::Metric;
  std::map<std::string, StoredText, NameLess> stored;
  std::map<std::string, std::string, NameLess> ordered;
  std::set<std::string, NameLess> asked;
  std::vector<DataParameter> parameters;
};

}  // namespace hexaplan
