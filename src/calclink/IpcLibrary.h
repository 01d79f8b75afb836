// The inter-process library: numbered notifications to the other programs of the suite.
#pragma once

#include <string>

#include "platform/Modules.h"
#include "quillmar/BoundFunction.h"
#include "quillmar/Ipc.h"

namespace quillmar {

struct IpcTable {
  QM_IPC_FUNCTIONS(QM_BOUND_WITH_CONVENTION)
};

class IpcLibrary {
 public:
  // Loads and binds; an empty name means the library's usual one. True also when it was loaded
  // before. The first missing function stops the binding: false, the library stays loaded and
  // what was bound works.
  bool Bind(const std::string& suiteFolder, const std::string& commonFolder,
            const std::string& fileName = {});
  bool Unbind();
  // For a process that is ending: forgets the library without freeing it.
  void Abandon() { library.Release(); }

  // Each returns 0 when its function is not bound.
  int LoginToCom(int mode, QmModule module, const std::string& moduleName, int reserved,
                 int* result) const;
  int SendModalMessage(int number, int value, const std::string& text) const;
  int SendModelessMessage(int number, int value, const std::string& text) const;

 private:
  platform::Library library;
  IpcTable table;
};

}  // namespace quillmar
