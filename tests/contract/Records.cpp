#include "Records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "Contract.h"
#include "platform/Modules.h"

namespace quillmar::contract {
namespace {

// Looked up anew each time: between two tests of a program the libraries are unloaded with the
// module and come back elsewhere.
QmModule SuiteLibrary(const char* name) {
  const QmModule library = platform::FindLoadedModule(name);
  return library != nullptr ? library
                            : platform::LoadLibraryAt(kSuiteFolder + "\\" + name).library.Release();
}

strict::StorageFunctions Com() {
  const QmModule library = SuiteLibrary(QM_STORAGE_LIBRARY);
  return strict::BindStorage(
      [&](const char* name) { return platform::FindFunction(library, name); });
}

strict::LinkFunctions Link() {
  const QmModule library = SuiteLibrary(QM_LINK_LIBRARY);
  return strict::BindLinks([&](const char* name) { return platform::FindFunction(library, name); });
}

// Reads one of `count` texts of a call with growing buffers, joined by blanks.
std::string Read(std::size_t count, const std::function<short(std::vector<std::string>&)>& call) {
  for (std::size_t length = 1024;; length += 1024) {
    std::vector<std::string> buffers(count, std::string(length, ' '));
    if (call(buffers) == 0) return kMissing;
    std::string joined;
    bool cut = false;
    for (const std::string& buffer : buffers) {
      const std::string text = buffer.c_str();
      cut = cut || text.size() + 1 >= length;
      joined += (joined.empty() ? "" : " ") + text;
    }
    if (!cut) return joined;
  }
}

std::string OpenBuffer(const std::string& id) {
  std::string buffer(QM_PROTOCOL_ID_BUFFER, '\0');
  std::memcpy(buffer.data(), id.data(), id.size());
  EXPECT_EQ(Com().Com_OpenProtocol(buffer.data()), 1) << id;
  return buffer.c_str();
}

}  // namespace

Record::Record() : id(OpenBuffer(std::string(QM_NEW_PROTOCOL_BLANKS, ' '))) {}

Record::Record(const std::string& id) : id(OpenBuffer(id)) {}

Record::~Record() {
  if (abandoned) return;
  EXPECT_NE(Com().Com_CloseProtocol(id.c_str()), 0) << id;
}

std::string Record::KeyWord(const char* section, const char* keyword) const {
  return Read(1, [&](auto& out) {
    return Com().Com_GetKeyWord(id.c_str(), section, keyword, out[0].data());
  });
}

std::string Record::Global(const char* item) const {
  return Read(1,
              [&](auto& out) { return Com().Com_GetGlobalData(id.c_str(), item, out[0].data()); });
}

std::string Record::ModelId() const {
  return Read(1, [&](auto& out) { return Com().Com_GetModelID(id.c_str(), out[0].data()); });
}

std::string Record::Parameter(const char* name) const {
  return Read(2, [&](auto& out) {
    return Com().Com_GetDataParam(id.c_str(), name, out[0].data(), out[1].data());
  });
}

std::vector<std::pair<std::string, std::string>> Record::Parameters() const {
  std::vector<std::pair<std::string, std::string>> parameters;
  short count = 0;
  EXPECT_NE(Com().Com_GetDataCount(id.c_str(), &count), 0);
  for (short i = 1; i <= count; ++i) {
    std::string name(1024, ' ');
    std::string value(1024, ' ');
    std::string unit(1024, ' ');
    EXPECT_NE(Com().Com_GetDataItem(id.c_str(), i, name.data(), value.data(), unit.data()), 0);
    parameters.emplace_back(name.c_str(), value.c_str());
  }
  return parameters;
}

std::string Record::Version() const {
  int major = 0;
  int minor = 0;
  if (Com().Com_GetVersion(id.c_str(), &major, &minor) == 0) return kMissing;
  return std::to_string(major) + "." + std::to_string(minor);
}

std::string Record::Members() const {
  return Read(1, [&](auto& out) { return Com().Com_GetProtocolList(id.c_str(), out[0].data()); });
}

Record& Record::SetMember(const std::string& member) {
  EXPECT_NE(Com().Com_PutProtocol(id.c_str(), member.c_str(), member.c_str()), 0) << member;
  return *this;
}

Record& Record::SetLinkFrom(const char* name, const std::string& text) {
  EXPECT_NE(Link().Link_SetLinkFrom(id.c_str(), name, text.c_str()), 0) << name;
  return *this;
}

Record& Record::SetKeyWord(const char* section, const char* keyword, const std::string& value) {
  EXPECT_NE(Com().Com_PutKeyWord(id.c_str(), section, keyword, value.c_str()), 0) << keyword;
  return *this;
}

Record& Record::EraseKeyWord(const char* section, const char* keyword) {
  EXPECT_NE(Com().Com_PutKeyWord(id.c_str(), section, keyword, nullptr), 0) << keyword;
  return *this;
}

Record& Record::SetGlobal(const char* item, const std::string& value) {
  EXPECT_NE(Com().Com_PutGlobalData(id.c_str(), item, value.c_str()), 0) << item;
  return *this;
}

Record& Record::SetModelId(const std::string& model) {
  EXPECT_NE(Com().Com_PutModelID(id.c_str(), model.c_str()), 0) << model;
  return *this;
}

Record& Record::SetViewKey(const std::string& key) {
  EXPECT_NE(Com().Com_PutViewKey(id.c_str(), key.c_str()), 0) << key;
  return *this;
}

Record& Record::SetVersion(int major, int minor) {
  EXPECT_NE(Com().Com_SetVersion(id.c_str(), major, minor), 0);
  return *this;
}

Record& Record::SetParameter(const char* name, const std::string& value, const std::string& unit) {
  EXPECT_NE(Com().Com_PutDataParam(id.c_str(), name, value.c_str(), unit.c_str()), 0) << name;
  return *this;
}

Record& Record::SetLinkTo(const char* name, const std::string& text) {
  EXPECT_NE(Link().Link_SetLinkTo(id.c_str(), name, text.c_str()), 0) << name;
  return *this;
}

Record& Record::SetFromReference(const std::string& reference) {
  const std::string idEnd = "<@PID>";
  const std::string itemEnd = "<@EL>";
  std::vector<std::string_view> items;
  const std::string_view text = reference;
  std::size_t at = text.find(idEnd);
  EXPECT_NE(at, std::string::npos) << reference;
  at += idEnd.size();
  for (std::size_t end; (end = text.find(itemEnd, at)) != std::string::npos;) {
    items.push_back(text.substr(at, end - at));
    at = end + itemEnd.size();
  }
  StringList list(items);
  EXPECT_NE(Com().Com_PutBuffer(id.c_str(), list.Get()), 0);
  return *this;
}

std::string Record::Reference() const {
  QmStringList* list = nullptr;
  EXPECT_NE(Com().Com_GetBuffer(id.c_str(), &list), 0);
  std::string reference = id + "<@PID>";
  for (std::string_view item : TextsOf(list)) reference.append(item).append("<@EL>");
  return reference;
}

int StateOf(const std::string& id) { return Com().Com_IsProtocolExists(id.c_str()); }

void Erase(const std::string& id) { EXPECT_NE(Com().Com_EraseProtocol(id.c_str()), 0) << id; }

std::set<std::string> ListedProtocols() {
  using List = int(QM_CDECL*)(const char* const**, int*);
  const auto list = reinterpret_cast<List>(
      platform::FindFunction(SuiteLibrary("Keelcomm.dll"), "Keelcomm_ListProtocols"));
  const char* const* ids = nullptr;
  int count = 0;
  EXPECT_EQ(list(&ids, &count), 1);
  return {ids, ids + count};
}

int StoredProtocols() {
  return kStrictCompanions ? strict::Core().Strict_StoredProtocols()
                           : static_cast<int>(ListedProtocols().size());
}

}  // namespace quillmar::contract
