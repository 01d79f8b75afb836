#include "protocol/ProtocolLibraries.h"

#include "base/BindFunction.h"
#include "base/CompanionLoader.h"
#include "platform/Dialogs.h"

namespace quillmar {
namespace {

std::string StorageLoadMessage(const CompanionLoad& load, const std::string& suiteFolder) {
  return "Can't load library " QM_STORAGE_LIBRARY "\n\nGetLastError returned: " +
         std::to_string(load.folderError) + ", " + std::to_string(load.systemError) +
         "\n_GetVardaFendrakePath = " + suiteFolder;
}

}  // namespace

bool ProtocolLibraries::Load(const std::string& suiteFolder, const std::string& title) {
  if (storageLibrary.module != nullptr) return true;
  return LoadStorage(suiteFolder, title) && LoadLinks(suiteFolder, title);
}

bool ProtocolLibraries::LoadStorage(const std::string& suiteFolder, const std::string& title) {
  storageLibrary.module = platform::FindLoadedModule(QM_STORAGE_LIBRARY);
  if (storageLibrary.module == nullptr) {
    CompanionLoad load = LoadCompanion({suiteFolder}, QM_STORAGE_LIBRARY);
    if (!load.library) {
      platform::ShowMessage(StorageLoadMessage(load, suiteFolder), title,
                            platform::MessageIcon::None);
      return false;
    }
    storageLibrary.owned = std::move(load.library);
    storageLibrary.module = storageLibrary.owned.Get();
  }
#define QM_BIND(name, result, parameters, arguments) \
  BindFunction(storage.name, storageLibrary.module, #name);
  QM_STORAGE_FUNCTIONS(QM_BIND)
#undef QM_BIND
  BindFunction(storage.Com_GetOwnerHWND, storageLibrary.module, QM_OWNER_WINDOW_QUERY);
  for (const char* spelling : QM_OWNER_WINDOW_QUERY_SPELLINGS) {
    if (storage.Com_GetOwnerHWND) break;
    BindFunction(storage.Com_GetOwnerHWND, storageLibrary.module, spelling);
  }
  return true;
}

bool ProtocolLibraries::LoadLinks(const std::string& suiteFolder, const std::string& title) {
  linkLibrary.module = platform::FindLoadedModule(QM_LINK_LIBRARY);
  if (linkLibrary.module == nullptr) {
    CompanionLoad load = LoadCompanion({suiteFolder}, QM_LINK_LIBRARY);
    if (!load.library) {
      platform::ShowMessage("Can't load library " QM_LINK_LIBRARY, title,
                            platform::MessageIcon::None);
      return false;
    }
    linkLibrary.owned = std::move(load.library);
    linkLibrary.module = linkLibrary.owned.Get();
  }
#define QM_BIND(name, result, parameters, arguments) \
  BindFunction(links.name, linkLibrary.module, #name);
  QM_LINK_FUNCTIONS(QM_BIND)
#undef QM_BIND
  return true;
}

void ProtocolLibraries::Free() {
  for (Held* held : {&storageLibrary, &linkLibrary}) {
    held->owned.Free();
    held->module = nullptr;
  }
  storage = {};
  links = {};
}

void ProtocolLibraries::Abandon() {
  storageLibrary.owned.Release();
  linkLibrary.owned.Release();
  // A protocol object that outlives this must not call into libraries that may be gone.
  storage = {};
  links = {};
}

}  // namespace quillmar
