#include "core/Store.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace quillmar::strict {
namespace {

// A written item: mark, kind, and fields that each end with "|". Bytes other than letters, digits
// and a few harmless signs are written "%XX", so that no value is taken for a separator, here or in
// a text that carries items.
constexpr const char* kOwnMark = "QS ";
constexpr char kFieldEnd = '|';
constexpr char kGlobalItem = 'g';
constexpr char kKeywordItem = 'k';
constexpr char kSectionItem = 's';
constexpr char kParameterItem = 'p';
constexpr char kMemberItem = 'm';
constexpr char kTextItem = 't';

bool StandsForItself(char character) {
  return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
         std::strchr(" ._-,+", character) != nullptr;
}

std::string Item(char kind, const std::vector<std::string>& fields) {
  std::string item = kOwnMark;
  item += kind;
  for (const std::string& field : fields) {
    for (const char character : field) {
      char code[4] = {character, '\0'};
      if (!StandsForItself(character)) {
        std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(character));
      }
      item += code;
    }
    item += kFieldEnd;
  }
  return item;
}

std::vector<std::string> Fields(const std::string& item, std::size_t at) {
  std::vector<std::string> fields;
  std::string field;
  for (; at < item.size(); ++at) {
    if (item[at] == kFieldEnd) {
      fields.push_back(std::exchange(field, {}));
    } else if (item[at] == '%') {
      field += static_cast<char>(std::strtol(item.substr(at + 1, 2).c_str(), nullptr, 16));
      at += 2;
    } else {
      field += item[at];
    }
  }
  fields.resize(3);
  return fields;
}

}  // namespace

std::string* Find(NamedTexts& texts, const std::string& name) {
  const auto found = std::find_if(texts.begin(), texts.end(),
                                  [&](const auto& entry) { return entry.first == name; });
  return found == texts.end() ? nullptr : &found->second;
}

void Put(NamedTexts& texts, const std::string& name, const std::string& value) {
  if (std::string* present = Find(texts, name)) {
    *present = value;
  } else {
    texts.emplace_back(name, value);
  }
}

bool Erase(NamedTexts& texts, const std::string& name) {
  return std::erase_if(texts, [&](const auto& entry) { return entry.first == name; }) > 0;
}

NamedTexts* Protocol::Section(const std::string& name) {
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const auto& section) { return section.first == name; });
  return found == sections.end() ? nullptr : &found->second;
}

NamedTexts& Protocol::MakeSection(const std::string& name) {
  if (NamedTexts* present = Section(name)) return *present;
  return sections.emplace_back(name, NamedTexts()).second;
}

DataParameter* Protocol::Parameter(const std::string& name) {
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const auto& parameter) { return parameter.name == name; });
  return found == parameters.end() ? nullptr : &*found;
}

std::vector<std::string> Protocol::Write() const {
  std::vector<std::string> items;
  for (const auto& [name, value] : texts) items.push_back(Item(kTextItem, {name, value}));
  for (const auto& [name, value] : globals) items.push_back(Item(kGlobalItem, {name, value}));
  for (const auto& [name, keywords] : sections) {
    items.push_back(Item(kSectionItem, {name}));
    for (const auto& [keyword, value] : keywords) {
      items.push_back(Item(kKeywordItem, {name, keyword, value}));
    }
  }
  for (const DataParameter& parameter : parameters) {
    items.push_back(Item(kParameterItem, {parameter.name, parameter.value, parameter.unit}));
  }
  for (const auto& [name, id] : members) items.push_back(Item(kMemberItem, {name, id}));
  items.insert(items.end(), foreign.begin(), foreign.end());
  return items;
}

void Protocol::Read(const std::vector<std::string>& items) {
  globals.clear();
  sections.clear();
  parameters.clear();
  members.clear();
  texts.clear();
  foreign.clear();
  const std::string mark = kOwnMark;
  for (const std::string& item : items) {
    if (item.rfind(mark, 0) != 0 || item.size() == mark.size()) {
      foreign.push_back(item);
      continue;
    }
    const std::vector<std::string> fields = Fields(item, mark.size() + 1);
    switch (item[mark.size()]) {
      case kTextItem:
        texts[fields[0]] = fields[1];
        break;
      case kGlobalItem:
        Put(globals, fields[0], fields[1]);
        break;
      case kSectionItem:
        MakeSection(fields[0]);
        break;
      case kKeywordItem:
        Put(MakeSection(fields[0]), fields[1], fields[2]);
        break;
      case kParameterItem:
        parameters.push_back({fields[0], fields[1], fields[2]});
        break;
      case kMemberItem:
        Put(members, fields[0], fields[1]);
        break;
      default:
        foreign.push_back(item);
    }
  }
}

Store& Store::Instance() {
  static Store& store = *new Store;
  return store;
}

void Store::Reset() {
  for (auto& [id, lists] : handedOut) {
    for (GuardedList& list : lists) list.Free();
  }
  for (GuardedList& list : expired) list.Free();
  handedOut.clear();
  expired.clear();
  protocols.clear();
}

std::string Store::NewIdentifier(const char* prefix) {
  // As long as an identifier may be. Never the same one twice, also after a reset.
  char text[32];
  std::snprintf(text, sizeof text, "%.9s-%015d", prefix, ++lastIdentifier);
  return text;
}

Protocol* Store::Find(const std::string& id) {
  const auto found = protocols.find(id);
  return found == protocols.end() ? nullptr : &found->second;
}

Protocol& Store::Make(const std::string& id) { return protocols[id]; }

void Store::Erase(const std::string& id) { protocols.erase(id); }

void Store::HoldByCalculation(const std::string& id, QmWindow window) {
  Protocol& protocol = Make(id);
  protocol.state = Protocol::State::HeldByCalculation;
  protocol.holder = window;
}

int Store::OpenCount() const {
  return static_cast<int>(std::count_if(protocols.begin(), protocols.end(), [](const auto& entry) {
    return entry.second.state == Protocol::State::Open;
  }));
}

QmStringList* Store::HandOut(const std::string& id, const std::vector<std::string>& texts) {
  return handedOut[id].emplace_back(texts).Get();
}

void Store::ExpireLists(const std::string& id) {
  const auto found = handedOut.find(id);
  if (found == handedOut.end()) return;
  for (GuardedList& list : found->second) {
    list.Expire();
    expired.push_back(std::move(list));
  }
  handedOut.erase(found);
}

}  // namespace quillmar::strict
