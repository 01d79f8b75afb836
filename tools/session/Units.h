// What an object's reference text says, as the demonstration's store writes it: the layout of its
// protocol, the parameters with their units, of which the CAD's lists carry only names and values,
// and what they mean.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace session {

// Unit by name of parameter. Empty for reference texts of another store; dimensionless values
// ("ND") have an empty unit.
std::map<std::string, std::string> UnitsOfReference(const std::string& reference);

// Name and value of each parameter, in their order, as bytes of the code page.
std::vector<std::pair<std::string, std::string>> ValuesOfReference(const std::string& reference);

// Values of a section by keyword, as bytes of the code page.
std::map<std::string, std::string> KeywordsOfReference(const std::string& reference,
                                                       const std::string& section);

// "1.0", "2.0"; empty for reference texts of another store.
std::string LayoutOfReference(const std::string& reference);
// The text without the layout, as stores wrote it that knew only one.
std::string WithoutLayout(const std::string& reference);

}  // namespace session
