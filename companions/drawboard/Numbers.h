// The numbers among a part's parameters.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "drawboard/ListText.h"

namespace drawboard {

// By name without regard to case. Of several with one name the first counts.
class Numbers {
 public:
  explicit Numbers(const NamedTexts& parameters);
  std::optional<double> Of(const std::string& lowerCaseName) const;
  double Or(const std::string& lowerCaseName, double fallback) const {
    return Of(lowerCaseName).value_or(fallback);
  }
  // Of row `number`: "<name>_<number>".
  double OfRow(const std::string& lowerCaseName, int number, double fallback) const {
    return Or(lowerCaseName + "_" + std::to_string(number), fallback);
  }

 private:
  std::unordered_map<std::string, double> values;
};

}  // namespace drawboard
