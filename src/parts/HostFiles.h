// Files that the calculation host writes of a protocol for the CAD: drawings and models.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// Extension of files of a kind that has none of its own.
inline constexpr const char* kOtherExtension = "tmp";

// Lets the host take note of the protocol. The host works with it meanwhile, so it is closed and
// opened again; false when that fails.
bool AnnounceAndReopen(CalcHost& host, VXProtocol& protocol);

// A new, empty file in the system's temporary folder; its path, empty on failure.
std::string MakeHostFile(const std::string& extension);

// True when the protocol is one of a metric calculation.
bool IsMetric(VXProtocol& protocol);

// Writes the drawing settings and the path of a new temporary file into the protocol and lets the
// host write that file. `path` is empty after a failure; what the host did not write is reported
// at `source`.
bool DrawPartFile(const PartServices& services, VXProtocol& protocol, const std::string& extension,
                  const SourceStamp& source, std::string& path);

}  // namespace quillmar
