// What stands in a protocol: keywords, global data, single texts, data parameters, members.
#include "core/Entries.h"
#include "core/EntryCall.h"

using quillmar::strict::DataParameter;
using quillmar::strict::EntryCall;
using quillmar::strict::Erase;
using quillmar::strict::Find;
using quillmar::strict::NamedTexts;
using quillmar::strict::Protocol;
using quillmar::strict::Put;

namespace {

short GetText(const char* function, const char* name, const char* protocolId, char* text) {
  EntryCall call(function);
  const Protocol* protocol = call.Opened(protocolId);
  call.Growing({text});
  if (!call.Sound()) return call.Refuse();
  const auto found = protocol->texts.find(name);
  return found == protocol->texts.end() ? call.Refuse() : call.Fill({found->second});
}

short PutText(const char* function, const char* name, const char* protocolId, const char* text) {
  EntryCall call(function);
  Protocol* protocol = call.Opened(protocolId);
  const std::string value = call.Text(text);
  if (!call.Sound()) return call.Refuse();
  protocol->texts[name] = value;
  return call.Accept();
}

std::string Joined(const NamedTexts& texts, std::string NamedTexts::value_type::*field) {
  std::string joined;
  for (const auto& entry : texts) joined += entry.*field + ";";
  return joined;
}

}  // namespace

short Strict_Com_GetKeyWord(const char* protocolId, const char* section, const char* keyword,
                            char* value) {
  EntryCall call("Com_GetKeyWord");
  Protocol* protocol = call.Opened(protocolId);
  const std::string inSection = call.Text(section);
  const std::string name = call.Text(keyword);
  call.Growing({value});
  if (!call.Sound()) return call.Refuse();
  NamedTexts* keywords = protocol->Section(inSection);
  const std::string* found = keywords == nullptr ? nullptr : Find(*keywords, name);
  return found == nullptr ? call.Refuse() : call.Fill({*found});
}

short Strict_Com_PutKeyWord(const char* protocolId, const char* section, const char* keyword,
                            const char* value) {
  EntryCall call("Com_PutKeyWord");
  Protocol* protocol = call.Opened(protocolId);
  const std::string inSection = call.Text(section);
  const std::string name = call.Text(keyword);
  call.Note(value == nullptr ? "(null)" : value);
  if (!call.Require(!inSection.empty() && !name.empty())) return call.Refuse();
  if (value != nullptr) {
    Put(protocol->MakeSection(inSection), name, value);
    return call.Accept();
  }
  NamedTexts* keywords = protocol->Section(inSection);
  return keywords != nullptr && Erase(*keywords, name) ? call.Accept() : call.Refuse();
}

short Strict_Com_GetKeyList(const char* protocolId, const char* section, char* list) {
  EntryCall call("Com_GetKeyList");
  Protocol* protocol = call.Opened(protocolId);
  const std::string inSection = call.Text(section);
  if (list == nullptr) {
    call.Note("(null)");
  } else {
    call.Growing({list});
  }
  if (!call.Sound()) return call.Refuse();
  const NamedTexts* keywords = protocol->Section(inSection);
  if (keywords == nullptr) return call.Refuse();
  if (list == nullptr) return call.Accept(static_cast<short>(keywords->size()));
  std::string joined = Joined(*keywords, &NamedTexts::value_type::first);
  if (!joined.empty()) joined.pop_back();
  return call.Fill({joined});
}

// Keywords are numbered from 1 through all sections.
short Strict_Com_GetOneKey(const char* protocolId, short index, char* keyword, char* value) {
  EntryCall call("Com_GetOneKey");
  const Protocol* protocol = call.Opened(protocolId);
  call.Number(index);
  call.Growing({keyword, value});
  if (!call.Sound()) return call.Refuse();
  int left = index;
  for (const auto& [name, keywords] : protocol->sections) {
    if (left >= 1 && left <= static_cast<int>(keywords.size())) {
      const auto& entry = keywords[static_cast<std::size_t>(left - 1)];
      return call.Fill({entry.first, entry.second});
    }
    left -= static_cast<int>(keywords.size());
  }
  return call.Refuse();
}

short Strict_Com_EraseSection(const char* protocolId, const char* section) {
  EntryCall call("Com_EraseSection");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(section);
  if (!call.Sound()) return call.Refuse();
  const auto erased = std::erase_if(protocol->sections,
                                    [&](const auto& candidate) { return candidate.first == name; });
  return erased > 0 ? call.Accept() : call.Refuse();
}

short Strict_Com_GetGlobalData(const char* protocolId, const char* item, char* value) {
  EntryCall call("Com_GetGlobalData");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(item);
  call.Growing({value});
  if (!call.Sound()) return call.Refuse();
  const std::string* found = Find(protocol->globals, name);
  return found == nullptr ? call.Refuse() : call.Fill({*found});
}

short Strict_Com_PutGlobalData(const char* protocolId, const char* item, const char* value) {
  EntryCall call("Com_PutGlobalData");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(item);
  const std::string text = call.Text(value);
  if (!call.Require(!name.empty())) return call.Refuse();
  Put(protocol->globals, name, text);
  return call.Accept();
}

#define STRICT_TEXT(name)                                                \
  short Strict_Com_Get##name(const char* protocolId, char* text) {       \
    return GetText("Com_Get" #name, #name, protocolId, text);            \
  }                                                                      \
  short Strict_Com_Put##name(const char* protocolId, const char* text) { \
    return PutText("Com_Put" #name, #name, protocolId, text);            \
  }
STRICT_TEXT(ModelID)
STRICT_TEXT(PartKey)
STRICT_TEXT(ViewKey)
STRICT_TEXT(Standard)
#undef STRICT_TEXT

short Strict_Com_GetDataFile(const char* protocolId, char* fileName) {
  return GetText("Com_GetDataFile", "DataFile", protocolId, fileName);
}

short Strict_Com_GetDataParam(const char* protocolId, const char* name, char* value, char* unit) {
  EntryCall call("Com_GetDataParam");
  Protocol* protocol = call.Opened(protocolId);
  const std::string parameterName = call.Text(name);
  call.Growing({value, unit});
  if (!call.Sound()) return call.Refuse();
  const DataParameter* found = protocol->Parameter(parameterName);
  return found == nullptr ? call.Refuse() : call.Fill({found->value, found->unit});
}

short Strict_Com_PutDataParam(const char* protocolId, const char* name, const char* value,
                              const char* unit) {
  EntryCall call("Com_PutDataParam");
  Protocol* protocol = call.Opened(protocolId);
  const DataParameter parameter{call.Text(name), call.Text(value), call.Text(unit)};
  if (!call.Require(!parameter.name.empty())) return call.Refuse();
  if (DataParameter* present = protocol->Parameter(parameter.name)) {
    *present = parameter;
  } else {
    protocol->parameters.push_back(parameter);
  }
  return call.Accept();
}

short Strict_Com_GetDataCount(const char* protocolId, short* count) {
  EntryCall call("Com_GetDataCount");
  const Protocol* protocol = call.Opened(protocolId);
  call.Output(count);
  if (!call.Sound()) return call.Refuse();
  *count = static_cast<short>(protocol->parameters.size());
  return call.Accept();
}

short Strict_Com_GetDataItem(const char* protocolId, short index, char* name, char* value,
                             char* unit) {
  EntryCall call("Com_GetDataItem");
  const Protocol* protocol = call.Opened(protocolId);
  call.Number(index);
  call.Growing({name, value, unit});
  if (!call.Sound()) return call.Refuse();
  if (index < 1 || index > static_cast<int>(protocol->parameters.size())) return call.Refuse();
  const DataParameter& found = protocol->parameters[static_cast<std::size_t>(index - 1)];
  return call.Fill({found.name, found.value, found.unit});
}

short Strict_Com_IsSuperProtocol(const char* protocolId, short* answer) {
  EntryCall call("Com_IsSuperProtocol");
  const Protocol* protocol = call.Opened(protocolId);
  call.Output(answer);
  if (!call.Sound()) return call.Refuse();
  *answer = protocol->members.empty() ? 0 : -1;
  return call.Accept();
}

short Strict_Com_GetProtocolList(const char* protocolId, char* list) {
  EntryCall call("Com_GetProtocolList");
  const Protocol* protocol = call.Opened(protocolId);
  call.Growing({list});
  if (!call.Sound()) return call.Refuse();
  return call.Fill({Joined(protocol->members, &NamedTexts::value_type::second)});
}

short Strict_Com_GetProtocolCount(const char* protocolId, short* count) {
  EntryCall call("Com_GetProtocolCount");
  const Protocol* protocol = call.Opened(protocolId);
  call.Output(count);
  if (!call.Sound()) return call.Refuse();
  *count = static_cast<short>(protocol->members.size());
  return call.Accept();
}

short Strict_Com_GetProtocol(const char* protocolId, const char* memberName, char* memberId) {
  EntryCall call("Com_GetProtocol");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(memberName);
  call.Growing({memberId});
  if (!call.Sound()) return call.Refuse();
  const std::string* found = Find(protocol->members, name);
  return found == nullptr ? call.Refuse() : call.Fill({*found});
}

short Strict_Com_PutProtocol(const char* protocolId, const char* memberName, const char* memberId) {
  EntryCall call("Com_PutProtocol");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(memberName);
  const std::string id = call.Text(memberId);
  if (!call.Require(!name.empty())) return call.Refuse();
  Put(protocol->members, name, id);
  return call.Accept();
}

short Strict_Com_RemoveProtocol(const char* protocolId, const char* memberName) {
  EntryCall call("Com_RemoveProtocol");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(memberName);
  if (!call.Sound()) return call.Refuse();
  return Erase(protocol->members, name) ? call.Accept() : call.Refuse();
}
