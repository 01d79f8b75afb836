// A user part made from the model that is open on the CAD's desktop.
#pragma once

#include <string>
#include <vector>

#include "parts/PartServices.h"

namespace quillmar {

// A row of the variables list of a user part.
struct UserVariable {
  std::string name;
  std::string description;
  std::string type;  // "R" for a real, which has a unit; else "S"
  std::string value;
  std::string unit;
};

struct DesktopModel {
  std::string id;  // as the CAD names it
  bool isInch = false;
  std::vector<UserVariable> variables;
};

// Writes the template file into the temporary folder; its path, empty when a write failed.
std::string WriteDesktopTemplate(const PartServices& services, const DesktopModel& model);

// Writes the template of the selected part with the parameters that the CAD tells, and starts the
// data wizard with it; 1 when it was started.
int DataWizard(const PartServices& services);

}  // namespace quillmar
