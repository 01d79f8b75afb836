// Lists that the CAD hands out in two steps: into a buffer of usual size first, into one of the
// size it asks for when that was too small.
#pragma once

#include <string>

#include "base/ErrorLog.h"
#include "session/CadDriverTable.h"

namespace quillmar {

enum class CadList {
  Parameters,
  ParametersEx,
  PhysicalPropertiesEx,
  FeaturesState,
  ReferenceDims,
  ShaftParameters,
  PartsVisibility
};

// True when the driver has the function that gives the list.
bool OffersList(const CadDriverTable& driver, CadList list);

// Reads one list; `key` is the identifier of the object's protocol. A failure is reported and
// leaves the text empty. A driver that does not offer the list gives an empty text and success.
bool ReadCadList(const CadDriverTable& driver, ErrorLog& errors, CadList list,
                 const std::string& key, std::string& text);

// Reference text of the CAD object of that name; nothing is reported.
bool ReadCadReference(const CadDriverTable& driver, const std::string& partName,
                      std::string& reference);

}  // namespace quillmar
