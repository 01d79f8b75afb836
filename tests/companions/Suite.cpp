#include "companions/Suite.h"

#include <filesystem>
#include <stdexcept>

namespace quillmar::test {
namespace {

platform::Library LoadFrom(const std::string& folder, const char* name) {
  auto loaded = platform::LoadLibraryAt(folder + "\\" + name);
  if (!loaded.library) throw std::runtime_error(std::string(name) + " cannot be loaded");
  return std::move(loaded.library);
}

template <typename Function>
void Bind(Function& function, const platform::Library& library, const char* name) {
  function = reinterpret_cast<Function>(platform::FindFunction(library.Get(), name));
  if (function == nullptr) throw std::runtime_error(std::string(name) + " is not exported");
}

}  // namespace

std::string InstallSuite(const TestMachine& machine, const std::string& name,
                         const std::string& settings) {
  std::string folder = machine.InFolder(name);
  std::filesystem::create_directories(machine.HostPath(folder));
  for (const char* library : {QM_STORAGE_LIBRARY, QM_LINK_LIBRARY, QM_IPC_LIBRARY}) {
    machine.Install(library, folder);
  }
  if (!settings.empty()) machine.WriteFile(folder + "\\Keelcomm.ini", settings);
  return folder;
}

Suite::Suite(const std::string& folder) : folder(folder) { Load(); }

void Suite::Reload() {
  ipcLibrary.Free();
  linkLibrary.Free();
  storageLibrary.Free();
  Load();
}

void Suite::Load() {
  storageLibrary = LoadFrom(folder, QM_STORAGE_LIBRARY);
  linkLibrary = LoadFrom(folder, QM_LINK_LIBRARY);
  ipcLibrary = LoadFrom(folder, QM_IPC_LIBRARY);
#define QM_BIND(name, result, parameters, names) Bind(storage.name, storageLibrary, #name);
  QM_STORAGE_FUNCTIONS(QM_BIND)
#undef QM_BIND
#define QM_BIND(name, result, parameters, names) Bind(links.name, linkLibrary, #name);
  QM_LINK_FUNCTIONS(QM_BIND)
#undef QM_BIND
#define QM_BIND(name, convention, result, parameters, names) Bind(ipc.name, ipcLibrary, #name);
  QM_IPC_FUNCTIONS(QM_BIND)
#undef QM_BIND
#define QM_BIND(name, result, parameters, names) Bind(ipc.name, ipcLibrary, #name);
  TESSIO_RECEIVER_FUNCTIONS(QM_BIND)
#undef QM_BIND
}

bool Suite::Open(std::string id) const {
  id.resize(QM_PROTOCOL_ID_BUFFER);
  return storage.Com_OpenProtocol(id.data()) == 1;
}

std::string Suite::OpenNew() const {
  std::string id(QM_NEW_PROTOCOL_BLANKS, ' ');
  id.resize(QM_PROTOCOL_ID_BUFFER);
  if (storage.Com_OpenProtocol(id.data()) != 1) return {};
  return id.c_str();
}

bool Suite::Close(const std::string& id) const {
  return storage.Com_CloseProtocol(id.c_str()) != 0;
}

bool Suite::Put(const std::string& id, const char* section, const char* keyword,
                const char* value) const {
  return storage.Com_PutKeyWord(id.c_str(), section, keyword, value) != 0;
}

Text Suite::Get(const std::string& id, const char* section, const char* keyword) const {
  Growing value;
  if (storage.Com_GetKeyWord(id.c_str(), section, keyword, value) == 0) return std::nullopt;
  return value.Text();
}

Text Suite::KeyList(const std::string& id, const char* section) const {
  Growing list;
  if (storage.Com_GetKeyList(id.c_str(), section, list) == 0) return std::nullopt;
  return list.Text();
}

std::vector<std::string> Suite::Buffer(const std::string& id) const {
  QmStringList* list = nullptr;
  if (storage.Com_GetBuffer(id.c_str(), &list) == 0) return {};
  const auto items = TextsOf(list);
  return {items.begin(), items.end()};
}

bool Suite::PutBuffer(const std::string& id, const std::vector<std::string>& items) const {
  StringList list({items.begin(), items.end()});
  return storage.Com_PutBuffer(id.c_str(), list.Get()) != 0;
}

}  // namespace quillmar::test
