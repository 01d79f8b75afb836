#include "Journal.h"

#include "base/Texts.h"

namespace quillmar::test {
namespace {

StorageTable realStorage;
LinkTable realLinks;

void NoteStoreCall(const std::string& name, const std::string& arguments) {
  const auto bar = arguments.find('|');
  const std::string rest = bar == std::string::npos ? "" : " " + arguments.substr(bar + 1);
  Journal::Get().Note(arguments.substr(0, bar) + " " + name.substr(name.find('_') + 1) + rest);
}

#define QM_FORWARD_STORAGE(name, result, parameters, arguments) \
  result QM_STDCALL Forward##name parameters {                  \
    NoteStoreCall(#name, Joined arguments);                     \
    return realStorage.name.pointer arguments;                  \
  }
#define QM_FORWARD_LINK(name, result, parameters, arguments) \
  result QM_STDCALL Forward##name parameters {               \
    NoteStoreCall(#name, Joined arguments);                  \
    return realLinks.name.pointer arguments;                 \
  }
QM_STORAGE_FUNCTIONS(QM_FORWARD_STORAGE)
QM_LINK_FUNCTIONS(QM_FORWARD_LINK)
#undef QM_FORWARD_STORAGE
#undef QM_FORWARD_LINK

// Noted under the identifier that came back.
short QM_STDCALL OpenAndName(char* protocolId) {
  const bool isNew = protocolId[0] == ' ';
  const short result = realStorage.Com_OpenProtocol.pointer(protocolId);
  if (isNew) Journal::Get().NameNew(protocolId);
  Journal::Get().Note(std::string(protocolId) + (isNew ? " OpenNew" : " OpenProtocol"));
  return result;
}

}  // namespace

Journal& Journal::Get() {
  static Journal journal;
  return journal;
}

void Journal::Reset() { lines.clear(); }

void Journal::Name(const std::string& protocolId, const std::string& name) {
  names.emplace_back(protocolId, name);
}

void Journal::NameNew(const std::string& protocolId) {
  Name(protocolId, "new" + std::to_string(++newProtocols));
}

std::string Journal::WithNames(std::string text) const {
  for (const auto& [protocolId, name] : names) text = ReplaceAll(text, protocolId, name);
  return text;
}

std::vector<std::string> Journal::Lines() const { return LinesOf(""); }

std::vector<std::string> Journal::LinesOf(const std::string& front) const {
  std::vector<std::string> found;
  for (const std::string& line : lines) {
    std::string named = WithNames(line);
    if (named.starts_with(front)) found.push_back(std::move(named));
  }
  return found;
}

StorageTable RecordedStorage(const StorageTable& real) {
  realStorage = real;
  StorageTable table;
#define QM_SET(name, result, parameters, arguments) table.name.pointer = Forward##name;
  QM_STORAGE_FUNCTIONS(QM_SET)
  table.Com_OpenProtocol.pointer = OpenAndName;
  return table;
}

LinkTable RecordedLinks(const LinkTable& real) {
  realLinks = real;
  LinkTable table;
  QM_LINK_FUNCTIONS(QM_SET)
#undef QM_SET
  return table;
}

}  // namespace quillmar::test
