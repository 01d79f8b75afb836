// The links between protocols.
#include <algorithm>
#include <cstring>

#include "core/Entries.h"
#include "core/EntryCall.h"
#include "core/Journal.h"

using quillmar::strict::EntryCall;
using quillmar::strict::IncomingLink;
using quillmar::strict::Journal;
using quillmar::strict::Protocol;
using quillmar::strict::Store;

namespace {

constexpr const char* kUniquePrefix = "STRICTUID";

IncomingLink* LinkNamed(Protocol* protocol, const std::string& name) {
  const auto found = std::find_if(protocol->incoming.begin(), protocol->incoming.end(),
                                  [&](const IncomingLink& link) { return link.name == name; });
  return found == protocol->incoming.end() ? nullptr : &*found;
}

const IncomingLink* LinkAt(const Protocol* protocol, int index) {
  if (index < 1 || index > static_cast<int>(protocol->incoming.size())) return nullptr;
  return &protocol->incoming[static_cast<std::size_t>(index - 1)];
}

// A parameter link depends on an expression, any other on the protocol before its "@".
std::string ParentOf(const IncomingLink& link) {
  return link.text.rfind('#', 0) == 0 ? std::string() : link.text.substr(0, link.text.find('@'));
}

}  // namespace

short Strict_Link_CreateUniquePID(char* protocolId) {
  EntryCall call("Link_CreateUniquePID");
  call.Growing({protocolId});
  if (!call.Sound()) return call.Refuse();
  return call.Fill({Store::Instance().NewIdentifier(kUniquePrefix)});
}

int Strict_Link_GetLinksFromCount(const char* protocolId) {
  EntryCall call("Link_GetLinksFromCount");
  const Protocol* protocol = call.Opened(protocolId);
  return call.Sound() ? call.Count(static_cast<int>(protocol->incoming.size())) : call.Count(0);
}

// The two integers belong to callers that pass them; this library knows the shorter list.
short Strict_Link_GetLinkFrom(const char* protocolId, int index, char* first, char* second, int*,
                              int*) {
  EntryCall call("Link_GetLinkFrom");
  const Protocol* protocol = call.Opened(protocolId);
  call.Number(index);
  call.Growing({first, second});
  if (!call.Sound()) return call.Refuse();
  const IncomingLink* link = LinkAt(protocol, index);
  return link == nullptr ? call.Refuse() : call.Fill({link->name, link->text});
}

short Strict_Link_GetLinkFrom2(const char* protocolId, const char* linkName, char* text, int*,
                               int*) {
  EntryCall call("Link_GetLinkFrom2");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(linkName);
  call.Growing({text});
  if (!call.Sound()) return call.Refuse();
  const IncomingLink* link = LinkNamed(protocol, name);
  return link == nullptr ? call.Refuse() : call.Fill({link->text});
}

short Strict_Link_EnableLinkFrom(const char* protocolId, const char* linkName, int enable) {
  EntryCall call("Link_EnableLinkFrom");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(linkName);
  call.Number(enable);
  if (!call.Sound()) return call.Refuse();
  IncomingLink* link = LinkNamed(protocol, name);
  if (link == nullptr) return call.Refuse();
  link->enabled = enable;
  return call.Accept();
}

short Strict_Link_SetLevelLinkFrom(const char* protocolId, const char* linkName, int first,
                                   int second) {
  EntryCall call("Link_SetLevelLinkFrom");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(linkName);
  call.Number(first);
  call.Number(second);
  if (!call.Sound()) return call.Refuse();
  IncomingLink* link = LinkNamed(protocol, name);
  if (link == nullptr) return call.Refuse();
  link->firstLevel = first;
  link->secondLevel = second;
  return call.Accept();
}

short Strict_Link_SetLinkFrom(const char* protocolId, const char* name, const char* text) {
  EntryCall call("Link_SetLinkFrom");
  Protocol* protocol = call.Opened(protocolId);
  const std::string linkName = call.Text(name);
  const std::string linkText = call.Text(text);
  if (!call.Require(!linkName.empty())) return call.Refuse();
  if (IncomingLink* present = LinkNamed(protocol, linkName)) {
    present->text = linkText;
  } else {
    protocol->incoming.push_back({linkName, linkText});
  }
  return call.Accept();
}

short Strict_Link_DeleteLinkFrom(const char* protocolId, const char* linkName) {
  EntryCall call("Link_DeleteLinkFrom");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(linkName);
  if (!call.Sound()) return call.Refuse();
  const auto erased = std::erase_if(protocol->incoming,
                                    [&](const IncomingLink& link) { return link.name == name; });
  return erased > 0 ? call.Accept() : call.Refuse();
}

short Strict_Link_GetLinkFromParentList(const char* protocolId, int index, char* list) {
  EntryCall call("Link_GetLinkFromParentList");
  const Protocol* protocol = call.Opened(protocolId);
  call.Number(index);
  call.Growing({list});
  if (!call.Sound()) return call.Refuse();
  const IncomingLink* link = LinkAt(protocol, index);
  return link == nullptr ? call.Refuse() : call.Fill({ParentOf(*link)});
}

short Strict_Link_GetLinkFromParentList2(const char* protocolId, const char* linkName, char* list) {
  EntryCall call("Link_GetLinkFromParentList2");
  Protocol* protocol = call.Opened(protocolId);
  const std::string name = call.Text(linkName);
  call.Growing({list});
  if (!call.Sound()) return call.Refuse();
  const IncomingLink* link = LinkNamed(protocol, name);
  return link == nullptr ? call.Refuse() : call.Fill({ParentOf(*link)});
}

short Strict_Link_GetParentsList(const char* protocolId, char* list) {
  EntryCall call("Link_GetParentsList");
  const Protocol* protocol = call.Opened(protocolId);
  call.Growing({list});
  if (!call.Sound()) return call.Refuse();
  std::string parents;
  for (const IncomingLink& link : protocol->incoming) {
    const std::string parent = ParentOf(link);
    if (parent.empty()) continue;
    if (!parents.empty()) parents += ",";
    parents += parent;
  }
  return call.Fill({parents});
}

int Strict_Link_GetLinksToCount(const char* protocolId) {
  EntryCall call("Link_GetLinksToCount");
  const Protocol* protocol = call.Opened(protocolId);
  return call.Sound() ? call.Count(static_cast<int>(protocol->outgoing.size())) : call.Count(0);
}

short Strict_Link_GetLinkTo(const char* protocolId, int index, char* first, char* second) {
  EntryCall call("Link_GetLinkTo");
  const Protocol* protocol = call.Opened(protocolId);
  call.Number(index);
  call.Growing({first, second});
  if (!call.Sound()) return call.Refuse();
  if (index < 1 || index > static_cast<int>(protocol->outgoing.size())) return call.Refuse();
  const auto& link = protocol->outgoing[static_cast<std::size_t>(index - 1)];
  return call.Fill({link.first, link.second});
}

short Strict_Link_DeleteLinkTo(const char* protocolId, const char* first, const char* second) {
  EntryCall call("Link_DeleteLinkTo");
  Protocol* protocol = call.Opened(protocolId);
  const std::pair<std::string, std::string> link{call.Text(first), call.Text(second)};
  if (!call.Sound()) return call.Refuse();
  return std::erase(protocol->outgoing, link) > 0 ? call.Accept() : call.Refuse();
}

short Strict_Link_SetLinkTo(const char* protocolId, const char* first, const char* second) {
  EntryCall call("Link_SetLinkTo");
  Protocol* protocol = call.Opened(protocolId);
  const std::pair<std::string, std::string> link{call.Text(first), call.Text(second)};
  if (!call.Require(!link.first.empty())) return call.Refuse();
  if (std::find(protocol->outgoing.begin(), protocol->outgoing.end(), link) ==
      protocol->outgoing.end()) {
    protocol->outgoing.push_back(link);
  }
  return call.Accept();
}

short Strict_Link_Translate(char* text, int capacity) {
  EntryCall call("Link_Translate");
  const std::string given = call.Text(text);
  call.Number(capacity);
  if (!call.Sound()) return call.Refuse();
  if (capacity < static_cast<int>(given.size())) {
    call.Violate("a capacity below the text's length");
    return call.Refuse();
  }
  text[capacity] = '\0';
  const std::string* translated = Journal::Instance().Answer("Link_Translate.text");
  if (translated != nullptr) {
    const auto length = std::min(translated->size(), static_cast<std::size_t>(capacity));
    std::memcpy(text, translated->c_str(), length);
    text[length] = '\0';
  }
  return call.Accept();
}
