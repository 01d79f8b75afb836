// Sections and their keywords: global data, data parameters and single texts are keywords too.
#include <charconv>
#include <cstring>
#include <string>

#include "keelcomm/GrowingText.h"
#include "keelcomm/StorageFunctions.h"
#include "keelcomm/Vocabulary.h"

namespace quillmar::keelcomm::functions {
namespace {

bool NamesOwnerWindow(const char* section, const char* keyword) {
  return NameEqual{}(keyword, kOwnerWindowItem) && NameEqual{}(section, kGlobalsSection);
}

// The window of a decimal text; 0 for anything else.
std::uint32_t WindowOf(const char* text) {
  std::uint32_t window = 0;
  if (text != nullptr) std::from_chars(text, text + std::strlen(text), window);
  return window;
}

// Texts that every protocol has: empty until they are written.
short GetSingleText(const char* protocolId, const char* keyword, char* value) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  const Entry* entry = protocol->record.Find(kProtocolSection, keyword);
  return WriteGrowing(value, entry == nullptr ? std::string_view() : entry->value);
}

short PutSingleText(const char* protocolId, const char* keyword, const char* value) {
  return value != nullptr && PutText(protocolId, kProtocolSection, keyword, value);
}

// Keyword `index` (from 1) of the whole protocol, sections in their order.
const Entry* EntryAt(const Record& record, int index) {
  if (index < 1) return nullptr;
  auto place = static_cast<std::size_t>(index - 1);
  for (const Section* section : record.Sections()) {
    if (place < section->Entries().size()) return section->Entries()[place];
    place -= section->Entries().size();
  }
  return nullptr;
}

}  // namespace

short GetText(const char* protocolId, const char* section, const char* keyword, char* value) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || !IsName(section) || !IsName(keyword)) return 0;
  const Entry* entry = protocol->record.Find(section, keyword);
  return entry != nullptr && WriteGrowing(value, entry->value);
}

short PutText(const char* protocolId, const char* section, const char* keyword, const char* value) {
  OpenProtocol* protocol = OpenedToWrite(protocolId);
  if (protocol == nullptr || !IsName(section) || !IsName(keyword)) return 0;
  if (NamesOwnerWindow(section, keyword)) Store::Instance().SetOwner(*protocol, WindowOf(value));
  if (value != nullptr) {
    protocol->record.Put(section, keyword, value);
  } else {
    // What is not there needs no erasing.
    protocol->record.Erase(section, keyword);
  }
  return 1;
}

short Com_GetKeyWord(const char* protocolId, const char* section, const char* keyword,
                     char* value) {
  return GetText(protocolId, section, keyword, value);
}

short Com_PutKeyWord(const char* protocolId, const char* section, const char* keyword,
                     const char* value) {
  return PutText(protocolId, section, keyword, value);
}

short Com_GetKeyList(const char* protocolId, const char* section, char* list) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || !IsName(section)) return 0;
  if (list == nullptr) return ToShort(protocol->record.Count(section));
  std::string joined;
  if (const Section* found = protocol->record.FindSection(section)) {
    for (const Entry* entry : found->Entries()) {
      if (!joined.empty()) joined += ';';
      joined += entry->keyword;
    }
  }
  return WriteGrowing(list, joined);
}

short Com_GetOneKey(const char* protocolId, short index, char* keyword, char* value) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  const Entry* entry = EntryAt(protocol->record, index);
  return entry != nullptr && WriteGrowing(keyword, entry->keyword) &&
         WriteGrowing(value, entry->value);
}

short Com_EraseSection(const char* protocolId, const char* section) {
  OpenProtocol* protocol = OpenedToWrite(protocolId);
  if (protocol == nullptr || !IsName(section)) return 0;
  if (NameEqual{}(section, kGlobalsSection)) Store::Instance().SetOwner(*protocol, 0);
  protocol->record.EraseSection(section);
  return 1;
}

short Com_GetGlobalData(const char* protocolId, const char* item, char* value) {
  return GetText(protocolId, kGlobalsSection, item, value);
}

short Com_PutGlobalData(const char* protocolId, const char* item, const char* value) {
  return PutText(protocolId, kGlobalsSection, item, value);
}

short Com_GetModelID(const char* protocolId, char* modelId) {
  return GetSingleText(protocolId, kModelIdKeyword, modelId);
}
short Com_PutModelID(const char* protocolId, const char* modelId) {
  return PutSingleText(protocolId, kModelIdKeyword, modelId);
}
short Com_GetPartKey(const char* protocolId, char* partKey) {
  return GetSingleText(protocolId, kPartKeyKeyword, partKey);
}
short Com_PutPartKey(const char* protocolId, const char* partKey) {
  return PutSingleText(protocolId, kPartKeyKeyword, partKey);
}
short Com_GetViewKey(const char* protocolId, char* viewKey) {
  return GetSingleText(protocolId, kViewKeyKeyword, viewKey);
}
short Com_PutViewKey(const char* protocolId, const char* viewKey) {
  return PutSingleText(protocolId, kViewKeyKeyword, viewKey);
}
short Com_GetStandard(const char* protocolId, char* standard) {
  return GetSingleText(protocolId, kStandardKeyword, standard);
}
short Com_PutStandard(const char* protocolId, const char* standard) {
  return PutSingleText(protocolId, kStandardKeyword, standard);
}

short Com_GetDataFile(const char* protocolId, char* fileName) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  const Entry* entry = protocol->record.Find(kMainSection, kDataFileKeyword);
  if (entry == nullptr) entry = protocol->record.Find(kFilesSection, kDataFileKeyword);
  return WriteGrowing(fileName, entry == nullptr ? std::string_view() : entry->value);
}

}  // namespace quillmar::keelcomm::functions
