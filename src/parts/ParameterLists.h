// The flat texts in which parameters travel between protocol and CAD.
#pragma once

#include <string>
#include <string_view>

#include "protocol/VXProtocol.h"
#include "session/CadSession.h"

namespace quillmar {

// Names of values that belong to the CAD side begin with "VXP_", a group and "_".
inline constexpr std::string_view kCadValuePrefix = "VXP_";
inline constexpr const char* kFeatureStates = "FS";
inline constexpr const char* kReferenceDims = "RD";
inline constexpr const char* kPhysicalProperties = "PP";

enum class ListForm {
  Values,  // "name,value,"
  Units    // "name,unit,"
};

// The list of a protocol's user parameters, headed by its view key; with a group the values of
// that group, without prefix and head. False, and an empty text, when the protocol's data cannot
// be counted.
bool BuildParameterList(VXProtocol& protocol, ListForm form, const std::string& group,
                        std::string& text);

// Takes a list from the CAD over into the protocol's data parameters. With a comma between tokens
// an item is name and value; with any other `separator` it is name, value, unit, link reference
// and description. Without a group the parameters that the CAD added last time and has no more
// disappear. False when the store did not take everything.
bool ApplyParameterList(VXProtocol& protocol, const CadSession& session, std::string_view text,
                        const std::string& group, char separator = ',');

}  // namespace quillmar
