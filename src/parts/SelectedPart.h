// The part that the user has selected in the CAD.
#pragma once

#include <optional>
#include <string>

#include "session/CadDriverTable.h"

namespace quillmar {

struct SelectedPart {
  std::string name;
  // Length of its reference text; below 1 when the part has none.
  int referenceLength = 0;
};

// Nothing when no part is selected or the CAD does not tell it.
std::optional<SelectedPart> AskSelectedPart(const CadDriverTable& driver);

}  // namespace quillmar
