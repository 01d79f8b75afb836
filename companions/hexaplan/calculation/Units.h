// Units of the calculations. They calculate in metric units; a designer who works in inches gives
// and gets the same values in inches, pounds-force and so on.
#pragma once

#include <string>

namespace hexaplan {

enum class UnitSystem { Metric = 0, Inch = 1 };

// What one of the system's units is in the metric unit `metric`: 25.4 for "mm" in inches. 1 for
// units that both systems share.
double FactorOf(const std::string& metric, UnitSystem system);

// Name of the unit that the system has in place of `metric`.
const char* UnitName(const char* metric, UnitSystem system);

// The factor by which a value that bears `unit` becomes one in `metric`; 1 for a unit that is not
// the partner of `metric`.
double FactorBetween(const std::string& metric, const std::string& unit);

}  // namespace hexaplan
