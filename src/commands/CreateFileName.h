// The texts by which the CAD names and describes a part.
#pragma once

#include <optional>
#include <string>

#include "parts/PartServices.h"

namespace quillmar {

struct PartTexts {
  std::string tags;    // "$<name><TAB>" for each tag of the bill of materials
  std::string values;  // "<caption><TAB>", then "<value><TAB>" for each tag
};

// By the options of the application that logged in last, which become the current ones. Nothing
// when the protocol does not open or has no part.
std::optional<PartTexts> CreateFileName(const PartServices& services,
                                        const std::string& protocolId);

}  // namespace quillmar
