// Lists that the CAD hands out in two steps: into a buffer of usual size first, into one of the
// size it asks for when that was too small.
#pragma once

#include <functional>
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

// Reads one list; `key` is the identifier of the object's protocol. A failure is reported. A
// driver without the function gives an empty text and success.
bool ReadCadList(const CadDriverTable& driver, ErrorLog& errors, CadList list,
                 const std::string& key, std::string& text);

// Parameters by the driver's preferred function.
bool ReadCadParameters(const CadDriverTable& driver, ErrorLog& errors, const std::string& key,
                       std::string& text);

// Reference text of the CAD object of that name; nothing is reported.
bool ReadCadReference(const CadDriverTable& driver, const std::string& partName,
                      std::string& reference);

// The two steps themselves, for a driver function that is given a buffer and its size.
enum class CadRead { Done, FailedAtOnce, FailedAgain };
CadRead ReadInTwoSteps(const std::function<int(char* text, int* size)>& call, std::string& text);

}  // namespace quillmar
