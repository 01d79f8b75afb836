// The bolted-connection library: four functions, each of which may be missing.
#pragma once

#include <string>

#include "platform/Modules.h"

namespace quillmar {

class BoltedConnectionLibrary {
 public:
  // Uses the library that is loaded already, else loads the suite's. Missing is no failure.
  void Bind(const std::string& suiteFolder);
  void Unbind();
  // For a process that is ending: forgets the library without freeing it.
  void Abandon() { library.Release(); }

  // 0 when the function is missing.
  int InsertBoltedConnection(const std::string& protocolId) const;
  int EditBoltedConnection2(const std::string& protocolId, int first, int second) const;

 private:
  platform::Library library;
  void* insert = nullptr;
  void* edit = nullptr;
  void* editAgain = nullptr;
  void* prepare = nullptr;
};

}  // namespace quillmar
