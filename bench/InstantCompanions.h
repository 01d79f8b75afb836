// Storage, link and driver functions that return at once, so that what is measured is the module.
#pragma once

#include <string_view>
#include <vector>

#include "protocol/ProtocolLibraries.h"
#include "session/CadDriverTable.h"

namespace quillmar::bench {

struct InstantProtocol {
  int parameters = 0;  // data parameters
  int views = 0;       // of the calculation, besides the protocol itself
  std::vector<std::string_view> buffer = {};
};

// Every protocol is the described one; reads give short texts, writes succeed.
StorageTable InstantStorage(const InstantProtocol& protocol);
LinkTable InstantLinks();
// All required driver functions succeed; the optional ones are missing.
CadDriverTable InstantDriver();

}  // namespace quillmar::bench
