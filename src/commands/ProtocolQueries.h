// Questions about single protocols that a CAD add-in asks.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/ProtocolKinds.h"
#include "parts/VXPart.h"

namespace quillmar {

// Nonzero when the object was made for this design only; 0 also for a text that is no reference.
int IsSmartPart(const PartServices& services, const std::string& reference);

// True for a feature that adds material, false for one that takes it away, nothing for any other
// part.
std::optional<bool> IsFeaturePositive(const PartServices& services, const std::string& protocolId);

// Nothing when the protocol does not hold the keyword.
std::optional<std::string> GetProtocolItem(const PartServices& services,
                                           const std::string& protocolId,
                                           const std::string& section, const std::string& keyword);

struct ProtocolType {
  ProtocolKind kind = ProtocolKind::Calculation;
  std::string calculation;
  int partType = 0;  // in the numbering of the CAD add-ins; 0 for a type without a number there
};
// A bolted connection is looked for only `withName`: both come from the same keyword. Nothing when
// the reference text cannot be read.
std::optional<ProtocolType> GetProtocolType(const PartServices& services,
                                            const std::string& reference, bool withName,
                                            bool withType);

// The main protocol of a bolted connection and its parts; nothing when the reference text cannot
// be read.
std::optional<std::vector<std::string>> GetAllMcwProtocolIds(const PartServices& services,
                                                             const std::string& reference);

// Nothing when the protocol is missing, has no part object, or the user cancelled a question.
std::optional<PartInformation> GetPartInformation(const PartServices& services,
                                                  const std::string& protocolId, bool change,
                                                  bool modelChanged);

}  // namespace quillmar
