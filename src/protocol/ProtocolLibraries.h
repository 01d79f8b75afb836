// The storage and link libraries and their entry points, bound by name.
#pragma once

#include <string>

#include "platform/Modules.h"
#include "quillmar/BoundFunction.h"
#include "quillmar/Links.h"
#include "quillmar/Storage.h"

namespace quillmar {

struct StorageTable {
  QM_STORAGE_FUNCTIONS(QM_BOUND_STDCALL)
};

struct LinkTable {
  QM_LINK_FUNCTIONS(QM_BOUND_STDCALL)
};

class ProtocolLibraries {
 public:
  // Both libraries loaded and bound, or the storage library already bound: true. Otherwise a
  // message box has told the user which file is missing. Names that a library does not export
  // stay unbound.
  bool Load(const std::string& suiteFolder, const std::string& title);
  // Frees what Load loaded. A library that somebody else had loaded already is left to him.
  void Free();
  // For a process that is ending: forgets both libraries without freeing them.
  void Abandon();

  const StorageTable& Storage() const { return storage; }
  const LinkTable& Links() const { return links; }

 private:
  struct Held {
    platform::Library owned;  // empty when the library was in the process already
    QmModule module = nullptr;
  };
  bool LoadStorage(const std::string& suiteFolder, const std::string& title);
  bool LoadLinks(const std::string& suiteFolder, const std::string& title);

  Held storageLibrary;
  Held linkLibrary;
  StorageTable storage;
  LinkTable links;
};

}  // namespace quillmar
