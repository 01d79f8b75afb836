#include "InstantCompanions.h"

#include <cstdlib>
#include <cstring>
#include <optional>

namespace quillmar::bench {
namespace {

InstantProtocol described;
std::optional<StringList> buffer;

// Every function of the list succeeds and writes nothing, unless it is replaced below.
#define QM_INSTANT(name, result, parameters_, arguments) \
  result QM_STDCALL Instant_##name parameters_ {         \
    [](auto&&...) {} arguments;                          \
    return 1;                                            \
  }
QM_STORAGE_FUNCTIONS(QM_INSTANT)
QM_LINK_FUNCTIONS(QM_INSTANT)
#undef QM_INSTANT

#define QM_INSTANT(need, name, result, parameters_, arguments) \
  result QM_CDECL Instant_##name parameters_ {                 \
    [](auto&&...) {} arguments;                                \
    return 1;                                                  \
  }
QM_CAD_FUNCTIONS(QM_INSTANT)
#undef QM_INSTANT

short QM_STDCALL OpenProtocol(char* protocolId) {
  if (protocolId[0] == ' ') std::strcpy(protocolId, "P0000001");
  return 1;
}

short QM_STDCALL DataCount(const char*, short* count) {
  *count = static_cast<short>(described.parameters);
  return 1;
}

short QM_STDCALL DataItem(const char*, short, char* name, char* value, char* unit) {
  std::strcpy(name, "diameter");
  std::strcpy(value, "12.5");
  std::strcpy(unit, "mm");
  return 1;
}

short QM_STDCALL KeyWord(const char*, const char* section, const char* keyword, char* value) {
  // No configurations: a plain part, with or without views.
  const bool none = std::strcmp(keyword, "Active") == 0 || std::strcmp(keyword, "Loop") == 0;
  if (std::strcmp(section, "McwViews") == 0) {
    std::strcpy(value,
                std::atoi(keyword + std::strlen("View")) <= described.views ? "FRONT,m" : "");
  } else {
    std::strcpy(value, none ? "" : "1");
  }
  return 1;
}

short QM_STDCALL GlobalData(const char*, const char* item, char* value) {
  std::strcpy(value, std::strcmp(item, "TypeOfPart") == 0 ? "2" : "0");
  return 1;
}

short QM_STDCALL DataParam(const char*, const char*, char* value, char* unit) {
  std::strcpy(value, "2.5");
  std::strcpy(unit, "kg");
  return 1;
}

short QM_STDCALL ShortText(const char*, char* text) {
  std::strcpy(text, "MODEL");
  return 1;
}

short QM_STDCALL Buffer(const char*, QmStringList** list) {
  *list = buffer->Get();
  return 1;
}

int QM_STDCALL NoLinks(const char*) { return 0; }

}  // namespace

StorageTable InstantStorage(const InstantProtocol& protocol) {
  described = protocol;
  buffer.emplace(protocol.buffer);
  StorageTable table;
#define QM_SET(name, result, parameters_, arguments) table.name.pointer = &Instant_##name;
  QM_STORAGE_FUNCTIONS(QM_SET)
#undef QM_SET
  table.Com_OpenProtocol.pointer = &OpenProtocol;
  table.Com_GetDataCount.pointer = &DataCount;
  table.Com_GetDataItem.pointer = &DataItem;
  table.Com_GetKeyWord.pointer = &KeyWord;
  table.Com_GetGlobalData.pointer = &GlobalData;
  table.Com_GetDataParam.pointer = &DataParam;
  table.Com_GetModelID.pointer = &ShortText;
  table.Com_GetViewKey.pointer = &ShortText;
  table.Com_GetBuffer.pointer = &Buffer;
  return table;
}

LinkTable InstantLinks() {
  LinkTable table;
#define QM_SET(name, result, parameters_, arguments) table.name.pointer = &Instant_##name;
  QM_LINK_FUNCTIONS(QM_SET)
#undef QM_SET
  table.Link_GetLinksToCount.pointer = &NoLinks;
  table.Link_GetLinksFromCount.pointer = &NoLinks;
  return table;
}

CadDriverTable InstantDriver() {
  CadDriverTable table;
#define QM_SET_REQUIRED(name) table.name.pointer = &Instant_##name;
#define QM_SET_OPTIONAL(name) static_cast<void>(&Instant_##name);
#define QM_SET(need, name, result, parameters_, arguments) QM_SET_##need(name)
  QM_CAD_FUNCTIONS(QM_SET)
#undef QM_SET
#undef QM_SET_REQUIRED
#undef QM_SET_OPTIONAL
  table.addIn = &table;
  return table;
}

}  // namespace quillmar::bench
