// What the user is offered for the templates of captions, file names and bills of materials.
#pragma once

#include <string>
#include <vector>

namespace quillmar {

// A tag stands in a template as "%token%".
struct OfferedTag {
  std::string token;
  std::string display;  // what the user reads
};

// The built-in tags in menu order, then the keys of the section "Settings" of the file, then, when
// the user has the material database, its fields. A missing file offers the built-in tags alone.
std::vector<OfferedTag> OfferedTags(const std::string& extDataFile);

// Names of extended data that the calculation host knows: the values of the keys "1", "2", ... of
// section "BOMDATAEX", up to the first empty one.
std::vector<std::string> HostExtendedDataNames(const std::string& hostIniFile);

}  // namespace quillmar
