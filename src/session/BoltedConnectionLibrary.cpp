#include "session/BoltedConnectionLibrary.h"

#include "platform/ForeignCall.h"
#include "quillmar/BoltedConnections.h"

namespace quillmar {

void BoltedConnectionLibrary::Bind(const std::string& suiteFolder) {
  QmModule module = platform::FindLoadedModule(QM_BOLTED_CONNECTION_LIBRARY);
  if (module == nullptr && !suiteFolder.empty()) {
    library = platform::LoadLibraryAt(suiteFolder + "\\" QM_BOLTED_CONNECTION_LIBRARY).library;
    module = library.Get();
  }
  if (module == nullptr) return;
  insert = platform::FindFunction(module, "InsertBoltedConnection");
  edit = platform::FindFunction(module, "EditBoltedConnection");
  editAgain = platform::FindFunction(module, "EditBoltedConnection2");
  prepare = platform::FindFunction(module, "PrepareMCWProtocol");
}

void BoltedConnectionLibrary::Unbind() {
  insert = edit = editAgain = prepare = nullptr;
  library.Free();
}

int BoltedConnectionLibrary::InsertBoltedConnection(const std::string& protocolId) const {
  if (insert == nullptr) return 0;
  const std::uintptr_t words[] = {platform::Word(protocolId.c_str())};
  return platform::CallForeign(insert, words, 1);
}

int BoltedConnectionLibrary::EditBoltedConnection2(const std::string& protocolId, int first,
                                                   int second) const {
  if (editAgain == nullptr) return 0;
  const std::uintptr_t words[] = {platform::Word(protocolId.c_str()), platform::Word(first),
                                  platform::Word(second)};
  return platform::CallForeign(editAgain, words, 3);
}

}  // namespace quillmar
