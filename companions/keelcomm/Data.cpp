// Data parameters, the buffer, and the members of a super protocol.
#include <string>
#include <vector>

#include "keelcomm/BufferItems.h"
#include "keelcomm/Failures.h"
#include "keelcomm/GrowingText.h"
#include "keelcomm/StorageFunctions.h"
#include "keelcomm/Vocabulary.h"

namespace quillmar::keelcomm::functions {

short Com_GetDataParam(const char* protocolId, const char* name, char* value, char* unit) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || !IsName(name)) return 0;
  const Entry* entry = protocol->record.Find(kDataSection, name);
  return entry != nullptr && WriteGrowing(value, entry->value) && WriteGrowing(unit, entry->unit);
}

short Com_PutDataParam(const char* protocolId, const char* name, const char* value,
                       const char* unit) {
  OpenProtocol* protocol = OpenedToWrite(protocolId);
  if (protocol == nullptr || !IsName(name) || value == nullptr) return 0;
  protocol->record.PutWithUnit(kDataSection, name, value, unit == nullptr ? "" : unit);
  return 1;
}

short Com_GetDataCount(const char* protocolId, short* count) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || count == nullptr) return 0;
  *count = ToShort(protocol->record.Count(kDataSection));
  return 1;
}

short Com_GetDataItem(const char* protocolId, short index, char* name, char* value, char* unit) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  const Section* data = protocol->record.FindSection(kDataSection);
  if (data == nullptr || index < 1) return 0;
  const auto place = static_cast<std::size_t>(index - 1);
  if (place >= data->Entries().size()) return 0;
  const Entry* entry = data->Entries()[place];
  return WriteGrowing(name, entry->keyword) && WriteGrowing(value, entry->value) &&
         WriteGrowing(unit, entry->unit);
}

short Com_GetBuffer(const char* protocolId, QmStringList** list) {
  OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || list == nullptr) return 0;
  const std::vector<std::string> items = BufferItemsOf(protocol->record);
  protocol->handedOut =
      std::make_unique<StringList>(std::vector<std::string_view>(items.begin(), items.end()));
  *list = protocol->handedOut->Get();
  return 1;
}

short Com_PutBuffer(const char* protocolId, QmStringList* list) {
  OpenProtocol* protocol = OpenedToWrite(protocolId);
  if (protocol == nullptr || list == nullptr) return 0;
  const auto contents = RecordFromItems(TextsOf(list));
  if (!contents) {
    ReportFailure("the buffer for protocol " + protocol->id + " is malformed");
    return 0;
  }
  protocol->record.ReplaceBy(*contents);
  return 1;
}

short Com_IsSuperProtocol(const char* protocolId, short* answer) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || answer == nullptr) return 0;
  *answer = protocol->record.Count(kMembersSection) > 0;
  return 1;
}

short Com_GetProtocolList(const char* protocolId, char* list) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  std::string members;
  if (const Section* section = protocol->record.FindSection(kMembersSection)) {
    for (const Entry* entry : section->Entries()) members += entry->value + ';';
  }
  return WriteGrowing(list, members);
}

short Com_GetProtocolCount(const char* protocolId, short* count) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || count == nullptr) return 0;
  *count = ToShort(protocol->record.Count(kMembersSection));
  return 1;
}

short Com_GetProtocol(const char* protocolId, const char* memberName, char* memberId) {
  return GetText(protocolId, kMembersSection, memberName, memberId);
}

short Com_PutProtocol(const char* protocolId, const char* memberName, const char* memberId) {
  return IsName(memberId) && PutText(protocolId, kMembersSection, memberName, memberId);
}

short Com_RemoveProtocol(const char* protocolId, const char* memberName) {
  OpenProtocol* protocol = OpenedToWrite(protocolId);
  return protocol != nullptr && IsName(memberName) &&
         protocol->record.Erase(kMembersSection, memberName);
}

}  // namespace quillmar::keelcomm::functions
