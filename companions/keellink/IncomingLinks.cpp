// Incoming links: where a parameter, or the whole protocol, takes its values from.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "keelcomm/GrowingText.h"
#include "keellink/LinkFunctions.h"
#include "keellink/Parents.h"
#include "keellink/RecordAccess.h"

namespace quillmar::keellink::functions {
namespace {

using keelcomm::WriteGrowing;

constexpr char kLinks[] = "LinksFrom";
constexpr char kStates[] = "LinksFromState";

struct LinkState {
  int enabled = 1;
  int level = 0;
  int secondLevel = 0;
};

bool IsName(const char* name) { return name != nullptr && *name != '\0'; }

LinkState ReadState(const RecordAccess& records, const char* protocolId, const char* name) {
  LinkState state;
  const char* text = nullptr;
  if (records.Keelcomm_GetText(protocolId, kStates, name, &text)) {
    std::sscanf(text, "%d,%d,%d", &state.enabled, &state.level, &state.secondLevel);
  }
  return state;
}

bool WriteState(const RecordAccess& records, const char* protocolId, const char* name,
                const LinkState& state) {
  const std::string text = std::to_string(state.enabled) + "," + std::to_string(state.level) + "," +
                           std::to_string(state.secondLevel);
  return records.Keelcomm_PutText(protocolId, kStates, name, text.c_str());
}

void GiveState(const LinkState& state, int* enabled, int* level) {
  if (enabled != nullptr) *enabled = state.enabled;
  if (level != nullptr) *level = state.level;
}

// The text of a link by its name; null when there is no such link.
const char* LinkText(const RecordAccess* records, const char* protocolId, const char* name) {
  const char* text = nullptr;
  if (records == nullptr || !IsName(name)) return nullptr;
  return records->Keelcomm_GetText(protocolId, kLinks, name, &text) ? text : nullptr;
}

struct Link {
  const char* name = nullptr;
  const char* text = nullptr;
};

// Link `index`, from 1; without a name when there is none.
Link LinkAt(const RecordAccess* records, const char* protocolId, int index) {
  Link link;
  if (records != nullptr) {
    records->Keelcomm_GetTextAt(protocolId, kLinks, index - 1, &link.name, &link.text);
  }
  return link;
}

}  // namespace

short Link_CreateUniquePID(char* protocolId) {
  const RecordAccess* records = FindRecordAccess();
  const char* id = nullptr;
  return records != nullptr && records->Keelcomm_MakeProtocolId(&id) &&
         WriteGrowing(protocolId, id);
}

int Link_GetLinksFromCount(const char* protocolId) {
  const RecordAccess* records = FindRecordAccess();
  int count = 0;
  if (records != nullptr) records->Keelcomm_CountTexts(protocolId, kLinks, &count);
  return count;
}

short Link_GetLinkFrom(const char* protocolId, int index, char* first, char* second, int* enabled,
                       int* level) {
  const RecordAccess* records = FindRecordAccess();
  const Link link = LinkAt(records, protocolId, index);
  if (link.name == nullptr || !WriteGrowing(first, link.name) || !WriteGrowing(second, link.text)) {
    return 0;
  }
  const std::string name = link.name;
  GiveState(ReadState(*records, protocolId, name.c_str()), enabled, level);
  return 1;
}

short Link_GetLinkFrom2(const char* protocolId, const char* linkName, char* text, int* enabled,
                        int* level) {
  const RecordAccess* records = FindRecordAccess();
  const char* found = LinkText(records, protocolId, linkName);
  if (found == nullptr || !WriteGrowing(text, found)) return 0;
  GiveState(ReadState(*records, protocolId, linkName), enabled, level);
  return 1;
}

short Link_EnableLinkFrom(const char* protocolId, const char* linkName, int enable) {
  const RecordAccess* records = FindRecordAccess();
  if (LinkText(records, protocolId, linkName) == nullptr) return 0;
  LinkState state = ReadState(*records, protocolId, linkName);
  state.enabled = enable;
  return WriteState(*records, protocolId, linkName, state);
}

short Link_SetLevelLinkFrom(const char* protocolId, const char* linkName, int first, int second) {
  const RecordAccess* records = FindRecordAccess();
  if (LinkText(records, protocolId, linkName) == nullptr) return 0;
  LinkState state = ReadState(*records, protocolId, linkName);
  state.level = first;
  state.secondLevel = second;
  return WriteState(*records, protocolId, linkName, state);
}

short Link_SetLinkFrom(const char* protocolId, const char* name, const char* text) {
  const RecordAccess* records = FindRecordAccess();
  if (records == nullptr || !IsName(name) || text == nullptr) return 0;
  // The state of a link that is made anew must not be that of an earlier one, whose keyword may
  // have been erased in the storage library.
  if (LinkText(records, protocolId, name) == nullptr) {
    records->Keelcomm_PutText(protocolId, kStates, name, nullptr);
  }
  return records->Keelcomm_PutText(protocolId, kLinks, name, text);
}

short Link_DeleteLinkFrom(const char* protocolId, const char* linkName) {
  const RecordAccess* records = FindRecordAccess();
  if (LinkText(records, protocolId, linkName) == nullptr) return 0;
  records->Keelcomm_PutText(protocolId, kStates, linkName, nullptr);
  return records->Keelcomm_PutText(protocolId, kLinks, linkName, nullptr);
}

short Link_GetLinkFromParentList(const char* protocolId, int index, char* list) {
  const Link link = LinkAt(FindRecordAccess(), protocolId, index);
  if (link.name == nullptr) return 0;
  ParentList parents;
  parents.AddParentsOf(link.text);
  return WriteGrowing(list, parents.Joined());
}

short Link_GetLinkFromParentList2(const char* protocolId, const char* linkName, char* list) {
  const char* text = LinkText(FindRecordAccess(), protocolId, linkName);
  if (text == nullptr) return 0;
  ParentList parents;
  parents.AddParentsOf(text);
  return WriteGrowing(list, parents.Joined());
}

short Link_GetParentsList(const char* protocolId, char* list) {
  const RecordAccess* records = FindRecordAccess();
  int count = 0;
  if (records == nullptr || !records->Keelcomm_CountTexts(protocolId, kLinks, &count)) return 0;
  ParentList parents;
  for (int index = 1; index <= count; ++index) {
    parents.AddParentsOf(LinkAt(records, protocolId, index).text);
  }
  return WriteGrowing(list, parents.Joined());
}

}  // namespace quillmar::keellink::functions
