// Storage, link and driver functions that return at once, so that what is measured is the module.
#pragma once

#include "protocol/ProtocolLibraries.h"
#include "session/CadDriverTable.h"

namespace quillmar::bench {

// A protocol with `parameterCount` data parameters; reads give short texts, writes succeed.
StorageTable InstantStorage(int parameterCount);
LinkTable InstantLinks();
// All required driver functions succeed; the optional ones are missing.
CadDriverTable InstantDriver();

}  // namespace quillmar::bench
