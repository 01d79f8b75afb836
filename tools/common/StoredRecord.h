// Everything that a protocol holds, as a list of fields that can be shown and compared; and its
// reference text.
#pragma once

#include <string>
#include <vector>

#include "common/StoreAccess.h"

namespace tools {

struct Field {
  std::string section;  // empty: a text that the storage library does not understand
  std::string keyword;
  std::string value;
  std::string unit;
  bool operator==(const Field&) const = default;
};

struct StoredRecord {
  std::string version;  // "major.minor"
  std::vector<Field> fields;
};

StoredRecord ReadRecord(quillmar::VXProtocol& protocol);
StoredRecord ReadRecord(const StoreAccess& store, const std::string& id);
// Of a reference text, either spelling. Nothing gets into the store. A ToolError when the text is
// not one.
StoredRecord ReadRecordOfReference(const StoreAccess& store, const std::string& reference);

// A line for each field that only one of the records has ("-", "+") or that differs ("~").
std::vector<std::string> DifferencesOf(const StoredRecord& before, const StoredRecord& after);

// The spelling that a reference text uses and the identifier in front of its marker.
struct ReferenceHead {
  std::string id;
  quillmar::Markers markers = quillmar::Markers::Standard;
};
ReferenceHead HeadOf(const std::string& reference);

// The reference text under the identifier that the store has for the protocol. (As CAD objects
// carry it, it may begin with another identifier, that of the object.)
std::string ReferenceOf(const StoreAccess& store, const std::string& id);

// Puts the contents of a reference text in the place of what protocol `id` holds, which is made
// when it is missing, in one durable step of the store. A ToolError leaves the store as it was.
void StoreReference(const StoreAccess& store, const std::string& id, const std::string& reference);

}  // namespace tools
