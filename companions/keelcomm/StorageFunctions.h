// The entry points of the storage library, without their border: declared from the contract's list.
#pragma once

#include <optional>
#include <string_view>

#include "keelcomm/Store.h"
#include "quillmar/Storage.h"

namespace quillmar::keelcomm::functions {

#define QM_DECLARE(name, result, parameters, names) result name parameters;
QM_STORAGE_FUNCTIONS(QM_DECLARE)
#undef QM_DECLARE

// The open protocol of that identifier; null for one that is not open, and for no identifier.
inline OpenProtocol* Opened(const char* protocolId) {
  return protocolId == nullptr ? nullptr : Store::Instance().Find(protocolId);
}
inline OpenProtocol* OpenedToWrite(const char* protocolId) {
  return protocolId == nullptr ? nullptr : Store::Instance().FindToWrite(protocolId);
}

// A section, a keyword or another name that a caller gave.
inline bool IsName(const char* name) { return name != nullptr && *name != '\0'; }

// Counts and indices are 16 bits wide.
inline short ToShort(std::size_t count) {
  return static_cast<short>(count > 0x7FFF ? 0x7FFF : count);
}

// Reads and writes a keyword of an open protocol, null erases it. A window that is written as owner
// holds the protocol from then on.
short GetText(const char* protocolId, const char* section, const char* keyword, char* value);
short PutText(const char* protocolId, const char* section, const char* keyword, const char* value);

}  // namespace quillmar::keelcomm::functions
