#include "hexaplan/host/ProtocolStore.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace hexaplan {

namespace {

constexpr std::size_t kStep = 1024;
constexpr std::size_t kLongestText = 16u << 20;

// Calls `read` with `Count` buffers of blanks, larger ones while a text may have been cut. Empty
// texts when the call fails.
template <std::size_t Count, typename Read>
std::optional<std::array<std::string, Count>> ReadGrowing(Read read) {
  for (std::size_t size = kStep; size <= kLongestText; size += kStep) {
    std::array<std::string, Count> texts;
    for (std::string& text : texts) text.assign(size, ' ');
    if (!read(texts)) return std::nullopt;
    bool cut = false;
    for (std::string& text : texts) {
      text.resize(std::strlen(text.c_str()));
      cut = cut || text.size() >= size - 1;
    }
    if (!cut) return texts;
  }
  return std::nullopt;
}

}  // namespace

bool ProtocolStore::Load(const std::string& folder) {
  auto loaded = quillmar::platform::LoadLibraryAt(folder + "\\" + QM_STORAGE_LIBRARY);
  if (!loaded.library) return false;
  Table bound;
  bool complete = true;
#define BIND(name, result, parameters, arguments)                        \
  bound.name.pointer = reinterpret_cast<Table::name##Function::Pointer>( \
      quillmar::platform::FindFunction(loaded.library.Get(), #name));    \
  complete = complete && bound.name;
  QM_STORAGE_FUNCTIONS(BIND)
#undef BIND
  if (!complete) return false;
  library = std::move(loaded.library);
  table = bound;
  listProtocols = reinterpret_cast<decltype(listProtocols)>(
      quillmar::platform::FindFunction(library.Get(), "Keelcomm_ListProtocols"));
  return true;
}

bool ProtocolStore::Exists(const std::string& protocolId) const {
  return !protocolId.empty() &&
         table.Com_IsProtocolExists(protocolId.c_str()) != QM_PROTOCOL_MISSING;
}

std::vector<std::string> ProtocolStore::Ids() const {
  const char* const* ids = nullptr;
  int count = 0;
  if (listProtocols == nullptr || listProtocols(&ids, &count) == 0) return {};
  return {ids, ids + count};
}

void ProtocolStore::Erase(const std::string& protocolId) const {
  table.Com_EraseProtocol(protocolId.c_str());
}

ProtocolRecord::ProtocolRecord(const ProtocolStore::Table& functions, std::string id)
    : functions(&functions), id(std::move(id)) {}

ProtocolRecord::ProtocolRecord(ProtocolRecord&& other) noexcept
    : functions(other.functions),
      id(std::move(other.id)),
      open(std::exchange(other.open, false)),
      allWritten(other.allWritten) {}

ProtocolRecord::~ProtocolRecord() { Close(); }

std::optional<ProtocolRecord> ProtocolRecord::Open(const ProtocolStore& store,
                                                   const std::string& id) {
  if (id.size() >= QM_PROTOCOL_ID_BUFFER || !store.Exists(id)) return std::nullopt;
  char buffer[QM_PROTOCOL_ID_BUFFER] = {};
  std::memcpy(buffer, id.c_str(), id.size());
  if (store.Functions().Com_OpenProtocol(buffer) != 1) return std::nullopt;
  return ProtocolRecord(store.Functions(), buffer);
}

std::optional<ProtocolRecord> ProtocolRecord::OpenShared(const ProtocolStore& store,
                                                         const std::string& id) {
  const bool held = id.size() < QM_PROTOCOL_ID_BUFFER &&
                    store.Functions().Com_IsProtocolExists(id.c_str()) == QM_PROTOCOL_OPEN;
  if (!held) return Open(store, id);
  ProtocolRecord record(store.Functions(), id);
  record.open = false;
  return record;
}

std::optional<ProtocolRecord> ProtocolRecord::CreateNew(const ProtocolStore& store) {
  char buffer[QM_PROTOCOL_ID_BUFFER] = {};
  std::memset(buffer, ' ', QM_NEW_PROTOCOL_BLANKS);
  if (store.Functions().Com_OpenProtocol(buffer) != 1) return std::nullopt;
  return ProtocolRecord(store.Functions(), buffer);
}

std::string ProtocolRecord::KeyWord(const char* section, const char* keyword) const {
  const auto texts = ReadGrowing<1>([&](auto& buffers) {
    return functions->Com_GetKeyWord(id.c_str(), section, keyword, buffers[0].data()) != 0;
  });
  return texts ? (*texts)[0] : std::string();
}

std::string ProtocolRecord::Global(const char* item) const {
  const auto texts = ReadGrowing<1>([&](auto& buffers) {
    return functions->Com_GetGlobalData(id.c_str(), item, buffers[0].data()) != 0;
  });
  return texts ? (*texts)[0] : std::string();
}

std::vector<DataParameter> ProtocolRecord::Parameters() const {
  std::vector<DataParameter> list;
  short count = 0;
  if (functions->Com_GetDataCount(id.c_str(), &count) == 0) return list;
  for (short i = 1; i <= count; ++i) {
    auto texts = ReadGrowing<3>([&](auto& buffers) {
      return functions->Com_GetDataItem(id.c_str(), i, buffers[0].data(), buffers[1].data(),
                                        buffers[2].data()) != 0;
    });
    if (texts) list.push_back({(*texts)[0], (*texts)[1], (*texts)[2]});
  }
  return list;
}

std::string ProtocolRecord::DataFileType() const {
  std::string text = KeyWord("Main", "DataFile");
  if (text.empty()) text = KeyWord("Files", "DataFile");
  const auto bar = text.find('|');
  return bar == std::string::npos ? text : text.substr(bar + 1);
}

int ProtocolRecord::MajorVersion() const {
  int major = 0;
  int minor = 0;
  return functions->Com_GetVersion(id.c_str(), &major, &minor) != 0 ? major : 0;
}

std::string ProtocolRecord::ModelId() const {
  const auto texts = ReadGrowing<1>(
      [&](auto& buffers) { return functions->Com_GetModelID(id.c_str(), buffers[0].data()) != 0; });
  return texts ? (*texts)[0] : std::string();
}

std::string ProtocolRecord::ViewKey() const {
  const auto texts = ReadGrowing<1>(
      [&](auto& buffers) { return functions->Com_GetViewKey(id.c_str(), buffers[0].data()) != 0; });
  return texts ? (*texts)[0] : std::string();
}

void ProtocolRecord::PutKeyWord(const char* section, const char* keyword,
                                const std::string& value) {
  Note(functions->Com_PutKeyWord(id.c_str(), section, keyword, value.c_str()));
}

void ProtocolRecord::EraseKeyWord(const char* section, const char* keyword) {
  // Nothing to erase counts as a failure in the store, but not here.
  functions->Com_PutKeyWord(id.c_str(), section, keyword, nullptr);
}

void ProtocolRecord::EraseSection(const char* section) {
  functions->Com_EraseSection(id.c_str(), section);
}

void ProtocolRecord::PutGlobal(const char* item, const std::string& value) {
  Note(functions->Com_PutGlobalData(id.c_str(), item, value.c_str()));
}

void ProtocolRecord::PutParameter(const DataParameter& parameter) {
  Note(functions->Com_PutDataParam(id.c_str(), parameter.name.c_str(), parameter.value.c_str(),
                                   parameter.unit.c_str()));
}

void ProtocolRecord::PutModel(const std::string& modelId, const std::string& viewKey) {
  Note(functions->Com_PutModelID(id.c_str(), modelId.c_str()));
  Note(functions->Com_PutViewKey(id.c_str(), viewKey.c_str()));
}

void ProtocolRecord::SetVersion(int major, int minor) {
  Note(functions->Com_SetVersion(id.c_str(), major, minor));
}

std::vector<std::string> ProtocolRecord::Members() const {
  const auto texts = ReadGrowing<1>([&](auto& buffers) {
    return functions->Com_GetProtocolList(id.c_str(), buffers[0].data()) != 0;
  });
  std::vector<std::string> members;
  std::string list = texts ? (*texts)[0] : std::string();
  for (auto end = list.find(';'); end != std::string::npos; end = list.find(';')) {
    if (end > 0) members.push_back(list.substr(0, end));
    list.erase(0, end + 1);
  }
  return members;
}

void ProtocolRecord::AddMember(const std::string& memberId) {
  Note(functions->Com_PutProtocol(id.c_str(), memberId.c_str(), memberId.c_str()));
}

bool ProtocolRecord::Close() {
  if (!open) return allWritten;
  open = false;
  Note(functions->Com_CloseProtocol(id.c_str()));
  return allWritten;
}

}  // namespace hexaplan
