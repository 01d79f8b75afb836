// A shaft in memory, read from and written to a protocol of either layout.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "conversion/ShaftLayout.h"
#include "protocol/VXProtocol.h"

namespace quillmar::shaft {

// A data parameter; both texts are empty when it could not be read.
struct Parameter {
  std::string value;
  std::string unit;
};

struct Element {
  int type = kFirstType;  // a number that is no type counts as the first one
  std::array<Parameter, kFields> fields;

  Parameter& operator[](Field field) { return fields[static_cast<std::size_t>(field)]; }
  const Parameter& operator[](Field field) const { return fields[static_cast<std::size_t>(field)]; }
};

// One value for each row of the list's table, empty where the layout that was read has none.
using Row = std::vector<Parameter>;

struct Shaft {
  std::vector<Element> elements;
  std::vector<Row> supports;
  std::vector<Row> loads;
  Row material{MaterialValues().size()};
};

// A protocol of the older layout without elements gives a shaft without anything. Nothing, with a
// report, for a protocol whose counts are damaged.
std::optional<Shaft> ReadOld(VXProtocol& protocol);
std::optional<Shaft> ReadCurrent(VXProtocol& protocol);

// Write the whole layout in its order; stop, and give false, at the first write that fails.
bool WriteOld(VXProtocol& protocol, const Shaft& shaft);
bool WriteCurrent(VXProtocol& protocol, const Shaft& shaft);

}  // namespace quillmar::shaft
