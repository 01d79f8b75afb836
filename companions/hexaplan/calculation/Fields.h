// What a calculation reads and writes: named numbers with units. Inputs come from the order that
// somebody gave for this run, else from the protocol, else from the field's default.
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace hexaplan {

// A named value as a protocol and the CAD carry it. Dimensionless values have the unit "ND".
struct DataParameter {
  std::string name;
  std::string value;
  std::string unit;
};

// One input of a calculation with the values that make sense for it, limits included.
struct Field {
  const char* name;
  const char* unit;
  double fallback;
  double least;
  double most;
  const char* meaning;
  bool whole = false;
};

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
  // What the protocol holds; an empty text counts as missing.
  void SetStored(const std::string& name, const std::string& text);
  // What was ordered for this run; stands above what is stored.
  void SetOrdered(const std::string& name, const std::string& text);

  bool IsGiven(const std::string& name) const;
  bool IsOrdered(const std::string& name) const { return ordered.count(name) != 0; }

  // The value of a field, which becomes part of the parameters read. Throws InputError for a text
  // that is no number or lies outside the field's limits.
  double Read(const Field& field) { return Read(field, field.name); }
  int ReadWhole(const Field& field) { return static_cast<int>(Read(field)); }
  // The same for a field of a numbered row, "<name>_<number>".
  double Read(const Field& field, int number);

  // Replaces the value of a field that was read, or adds it.
  void Replace(const Field& field, double value);

  // Everything read so far, in the order of reading.
  const std::vector<DataParameter>& Parameters() const { return parameters; }

  // Throws InputError for the first ordered name that the calculation did not ask for.
  void RefuseUnknown(const std::string& calculationName) const;

 private:
  double Read(const Field& field, const std::string& name);

  std::map<std::string, std::string, NameLess> stored;
  std::map<std::string, std::string, NameLess> ordered;
  std::set<std::string, NameLess> asked;
  std::vector<DataParameter> parameters;
};

}  // namespace hexaplan
