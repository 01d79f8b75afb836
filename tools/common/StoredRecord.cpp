#include "common/StoredRecord.h"

#include <fmt/format.h>

#include <map>

#include "common/Program.h"
#include "keelcomm/BufferItems.h"

namespace tools {
namespace {

using quillmar::Markers;
using quillmar::VXProtocol;
namespace keelcomm = quillmar::keelcomm;

using Place = std::pair<std::string, std::string>;

std::map<Place, Field> ByPlace(const StoredRecord& record) {
  std::map<Place, Field> fields;
  for (const Field& field : record.fields) fields[{field.section, field.keyword}] = field;
  return fields;
}

std::string NameOf(const Field& field) {
  return field.section.empty()
             ? "text " + field.keyword
             : fmt::format("[{}] {}", ForUser(field.section), ForUser(field.keyword));
}

std::string ValueOf(const Field& field) {
  return ForUser(field.unit.empty() ? field.value : field.value + " " + field.unit);
}

VXProtocol& RequireReady(VXProtocol& protocol, const std::string& id) {
  if (!protocol.IsReady()) throw ToolError(fmt::format("{} cannot be opened", ForUser(id)));
  return protocol;
}

}  // namespace

StoredRecord ReadRecord(VXProtocol& protocol) {
  std::vector<std::string_view> texts;
  if (!protocol.GetBuffer(texts)) throw ToolError("The protocol cannot be read");
  StoredRecord read;
  int major = 0;
  int minor = 0;
  protocol.GetVersion(major, minor);
  read.version = fmt::format("{}.{}", major, minor);
  const auto record = keelcomm::RecordFromItems(texts);
  if (!record) throw ToolError("The protocol's buffer is damaged");
  for (const keelcomm::Section* section : record->Sections()) {
    for (const keelcomm::Entry* entry : section->Entries()) {
      read.fields.push_back({section->Name(), entry->keyword, entry->value, entry->unit});
    }
  }
  for (const std::string& text : record->ForeignTexts()) {
    read.fields.push_back({"", std::to_string(read.fields.size() + 1), text, ""});
  }
  return read;
}

StoredRecord ReadRecord(const StoreAccess& store, const std::string& id) {
  store.RequireProtocol(id);
  VXProtocol protocol(store.Context(), id);
  return ReadRecord(RequireReady(protocol, id));
}

StoredRecord ReadRecordOfReference(const StoreAccess& store, const std::string& reference) {
  const ReferenceHead head = HeadOf(reference);
  // A protocol that is never closed and so never stored.
  VXProtocol scratch(store.Context());
  if (scratch.CreateNew() != 1) throw ToolError("The storage library makes no protocol");
  scratch.SetVersion(1, 0);
  const bool read = scratch.PutBufferFromReference(reference, head.markers);
  StoredRecord record;
  if (read) record = ReadRecord(scratch);
  scratch.Erase();
  if (!read) throw ToolError("The storage library refuses the reference text");
  return record;
}

std::vector<std::string> DifferencesOf(const StoredRecord& before, const StoredRecord& after) {
  std::vector<std::string> lines;
  if (before.version != after.version) {
    lines.push_back(fmt::format("~ version: {} -> {}", before.version, after.version));
  }
  const auto old = ByPlace(before);
  const auto fresh = ByPlace(after);
  for (const auto& [place, field] : old) {
    const auto found = fresh.find(place);
    if (found == fresh.end()) {
      lines.push_back(fmt::format("- {} = {}", NameOf(field), ValueOf(field)));
    } else if (!(found->second == field)) {
      lines.push_back(
          fmt::format("~ {}: {} -> {}", NameOf(field), ValueOf(field), ValueOf(found->second)));
    }
  }
  for (const auto& [place, field] : fresh) {
    if (!old.contains(place)) {
      lines.push_back(fmt::format("+ {} = {}", NameOf(field), ValueOf(field)));
    }
  }
  return lines;
}

ReferenceHead HeadOf(const std::string& reference) {
  ReferenceHead head;
  for (const Markers markers : {Markers::Standard, Markers::Alternate}) {
    head.markers = markers;
    if (VXProtocol::ExtractProtocolID(reference, head.id, markers)) return head;
  }
  throw ToolError("This is no reference text: it has no \"<@PID>\"");
}

std::string ReferenceOf(const StoreAccess& store, const std::string& id) {
  store.RequireProtocol(id);
  VXProtocol protocol(store.Context(), id);
  std::string reference;
  RequireReady(protocol, id).MakeReference(reference, Markers::Standard);
  return id + reference.substr(HeadOf(reference).id.size());
}

void StoreReference(const StoreAccess& store, const std::string& id, const std::string& reference) {
  const ReferenceHead head = HeadOf(reference);
  const bool isNew = !store.Exists(id);
  VXProtocol protocol(store.Context(), id);
  RequireReady(protocol, id);
  // The version that a text without one stands for.
  if (isNew) protocol.SetVersion(1, 0);
  if (protocol.PutBufferFromReference(reference, head.markers)) {
    if (protocol.Close()) return;
    throw ToolError(fmt::format("{} cannot be stored", ForUser(id)));
  }
  if (isNew) protocol.Erase();
  throw ToolError("The storage library refuses the reference text");
}

}  // namespace tools
