// What quillmar-store does, a function a command; each gives the exit status.
#pragma once

#include <string>
#include <vector>

#include "common/StoreAccess.h"

namespace tools {

// One line a protocol; with `idsOnly` nothing but the identifiers, for scripts.
int ListProtocols(const StoreAccess& store, bool idsOnly);
int ShowProtocol(const StoreAccess& store, const std::string& id);

// Compares two protocols; an operand that holds a "/" or "\" or ends in ".ref" is a file with a
// reference text.
int ShowDifferences(const StoreAccess& store, const std::string& left, const std::string& right);

struct Export {
  std::vector<std::string> ids;  // UTF-8
  bool all = false;
  std::string folder;  // empty: one protocol to standard output
};
int ExportProtocols(const StoreAccess& store, const Export& what);

struct Import {
  std::vector<std::string> files;
  std::string asId;      // identifier in place of that in the text; for one file
  bool replace = false;  // also protocols that the store has
  bool dryRun = false;
};
int ImportProtocols(const StoreAccess& store, const Import& what);

// The database, and each protocol: whether it can be read, its reference text gives it back, and
// what it refers to is there.
int CheckStore(const StoreAccess& store);

}  // namespace tools
