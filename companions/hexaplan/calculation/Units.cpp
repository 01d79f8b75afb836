#include "hexaplan/calculation/Units.h"

#include <algorithm>
#include <iterator>

namespace hexaplan {

namespace {

constexpr double kMillimetres = 25.4;    // of an inch
constexpr double kNewtons = 4.44822162;  // of a pound-force
constexpr double kKilograms = 0.45359237;
constexpr double kFoot = 12 * kMillimetres / 1000;  // m

struct Partners {
  const char* metric;
  const char* inch;
  double factor;  // of the inch system's unit in the metric one
};

// Densities stay metric: the tables of materials give them so, and the CAD expects them so.
constexpr Partners kPartners[] = {
    {"mm", "in", kMillimetres},
    {"N", "lbf", kNewtons},
    {"Nm", "lbf in", kNewtons* kMillimetres / 1000},
    {"N/mm", "lbf/in", kNewtons / kMillimetres},
    {"MPa", "psi", kNewtons / (kMillimetres * kMillimetres)},
    {"mm2", "in2", kMillimetres* kMillimetres},
    {"kg", "lb", kKilograms},
    {"kW", "hp", 0.74569987},
    {"m/s", "ft/s", kFoot},
    {"m/s2", "ft/s2", kFoot},
    {"m/s3", "ft/s3", kFoot},
};

const Partners* Find(const std::string& metric) {
  const auto found =
      std::find_if(std::begin(kPartners), std::end(kPartners),
                   [&](const Partners& partners) { return metric == partners.metric; });
  return found != std::end(kPartners) ? found : nullptr;
}

}  // namespace

double FactorOf(const std::string& metric, UnitSystem system) {
  const Partners* partners = system == UnitSystem::Inch ? Find(metric) : nullptr;
  return partners != nullptr ? partners->factor : 1.0;
}

const char* UnitName(const char* metric, UnitSystem system) {
  const Partners* partners = system == UnitSystem::Inch ? Find(metric) : nullptr;
  return partners != nullptr ? partners->inch : metric;
}

double FactorBetween(const std::string& metric, const std::string& unit) {
  const Partners* partners = Find(metric);
  return partners != nullptr && unit == partners->inch ? partners->factor : 1.0;
}

}  // namespace hexaplan
