// Inputs for calculations that nobody types in: files "<number>.ini" in the host's folder "Inputs",
// written by whoever starts calculations, answered by the host.
//
//   [Calculation]
//   DataFile=GEAR1        optional: only a calculation of this type takes the order
//   Protocol=<identifier> optional: only the calculation of this protocol takes it
//   [Inputs]
//   z1=21                 fields of the calculation
//   [Answer]              added by the host; an answered order is never taken again
//   Result=Calculated     or Refused
//   Code=150              callback code, when calculated
//   Protocols=<ids>       joined by ","; what the callback list holds
//   Message=<text>        what is wrong with the values, when refused
//
// Orders are numbered from 1 without gaps; the lowest one that fits and has no answer is taken.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace hexaplan {

struct Order {
  std::string file;
  std::vector<std::pair<std::string, std::string>> fields;
};

class Orders {
 public:
  explicit Orders(std::string folder) : folder(std::move(folder)) {}

  std::optional<Order> Find(const std::string& dataFileType, const std::string& protocolId) const;
  void AnswerCalculated(const Order& order, int code, const std::string& protocols) const;
  void AnswerRefused(const Order& order, const std::string& message) const;

 private:
  std::string folder;
};

}  // namespace hexaplan
