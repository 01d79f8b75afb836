// Units of an object's parameters. The CAD's lists carry names and values; the units stand in the
// object's reference text, in the data parameters that the demonstration's store writes.
#pragma once

#include <map>
#include <string>

namespace session {

// Unit by name of parameter. Empty for reference texts of another store; dimensionless values
// ("ND") have an empty unit.
std::map<std::string, std::string> UnitsOfReference(const std::string& reference);

}  // namespace session
