#include "calclink/IpcLibrary.h"

#include "base/BindFunction.h"
#include "base/CompanionLoader.h"

namespace quillmar {
bool IpcLibrary::Bind(const std::string& suiteFolder, const std::string& commonFolder,
                      const std::string& fileName) {
  if (library) return true;
  library = LoadCompanion({suiteFolder, commonFolder}, fileName.empty() ? QM_IPC_LIBRARY : fileName)
                .library;
  if (!library) return false;
#define QM_BIND(name, convention, result, parameters, arguments) \
  if (!BindFunction(table.name, library.Get(), #name)) return false;
  QM_IPC_FUNCTIONS(QM_BIND)
#undef QM_BIND
  return true;
}

bool IpcLibrary::Unbind() {
  table = {};
  library.Free();
  return true;
}

int IpcLibrary::LoginToCom(int mode, QmModule module, const std::string& moduleName, int reserved,
                           int* result) const {
  return table.LoginToCom(mode, module, moduleName.c_str(), reserved, result);
}

int IpcLibrary::SendModalMessage(int number, int value, const std::string& text) const {
  return table.SendModalMessage(number, value, text.c_str());
}

int IpcLibrary::SendModelessMessage(int number, int value, const std::string& text) const {
  return table.SendModelessMessage(number, value, text.c_str());
}

}  // namespace quillmar
