#include "keelcomm/SharedRecords.h"

#include <string>
#include <vector>

#include "keelcomm/Failures.h"
#include "keelcomm/StorageFunctions.h"

namespace quillmar::keelcomm::functions {
namespace {

int Keelcomm_GetText(const char* protocolId, const char* section, const char* keyword,
                     const char** value) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || !IsName(section) || !IsName(keyword)) return 0;
  const Entry* entry = protocol->record.Find(section, keyword);
  if (entry == nullptr) return 0;
  *value = entry->value.c_str();
  return 1;
}

int Keelcomm_PutText(const char* protocolId, const char* section, const char* keyword,
                     const char* value) {
  return PutText(protocolId, section, keyword, value);
}

int Keelcomm_CountTexts(const char* protocolId, const char* section, int* count) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  *count = static_cast<int>(protocol->record.Count(section));
  return 1;
}

int Keelcomm_GetTextAt(const char* protocolId, const char* section, int index, const char** keyword,
                       const char** value) {
  const OpenProtocol* protocol = Opened(protocolId);
  const Section* found = protocol == nullptr ? nullptr : protocol->record.FindSection(section);
  if (found == nullptr || index < 0) return 0;
  const auto place = static_cast<std::size_t>(index);
  if (place >= found->Entries().size()) return 0;
  *keyword = found->Entries()[place]->keyword.c_str();
  *value = found->Entries()[place]->value.c_str();
  return 1;
}

int Keelcomm_MakeProtocolId(const char** protocolId) {
  static std::string id;
  id = Store::Instance().MakeUniqueId();
  *protocolId = id.c_str();
  return 1;
}

int Keelcomm_Save(const char* protocolId) {
  OpenProtocol* protocol = Opened(protocolId);
  return protocol != nullptr && Store::Instance().Save(*protocol);
}

int Keelcomm_Refresh(const char* protocolId) {
  OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  Store::Instance().Refresh(*protocol);
  return 1;
}

int Keelcomm_ListProtocols(const char* const** identifiers, int* count) {
  static std::vector<std::string> ids;
  static std::vector<const char*> texts;
  ids = Store::Instance().StoredIds();
  texts.clear();
  for (const std::string& id : ids) texts.push_back(id.c_str());
  *identifiers = texts.data();
  *count = static_cast<int>(texts.size());
  return 1;
}

int Keelcomm_CheckDatabase(const char** findings) {
  static std::string text;
  text = Store::Instance().CheckDatabase();
  *findings = text.c_str();
  return 1;
}

}  // namespace
}  // namespace quillmar::keelcomm::functions

namespace {
namespace functions = quillmar::keelcomm::functions;
}

#define EXPORT_RECORD_FUNCTION(name, result, parameters, names)                              \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters {                                    \
    try {                                                                                    \
      return quillmar::keelcomm::Guarded([&]() -> result { return functions::name names; }); \
    } catch (...) {                                                                          \
      return 0;                                                                              \
    }                                                                                        \
  }
KEELCOMM_RECORD_FUNCTIONS(EXPORT_RECORD_FUNCTION)
