// The set as its own tests use it: bound companions, a clean journal, a protocol to work on.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "Bindings.h"
#include "CoreLink.h"

namespace quillmar::strict {

class StrictSet : public testing::Test {
 protected:
  StrictSet() { Core().Strict_Reset(); }

  static std::vector<std::string> Violations() {
    std::vector<std::string> violations;
    for (int i = 0; i < Core().Strict_ViolationCount(); ++i) {
      violations.emplace_back(Core().Strict_Violation(i));
    }
    return violations;
  }

  // A new, open protocol.
  std::string NewProtocol() {
    char id[QM_PROTOCOL_ID_BUFFER] = {};
    std::string(QM_NEW_PROTOCOL_BLANKS, ' ').copy(id, QM_NEW_PROTOCOL_BLANKS);
    EXPECT_EQ(com.Com_OpenProtocol(id), 1);
    return id;
  }

  short Open(const std::string& id) {
    char buffer[QM_PROTOCOL_ID_BUFFER] = {};
    id.copy(buffer, sizeof buffer - 1);
    return com.Com_OpenProtocol(buffer);
  }

  static std::string Blanks(std::size_t count = 1024) { return std::string(count, ' '); }

  static void* StorageFunction(const char* name) {
    return FunctionOf(ImageLibrary("Vantorel/Fendrake/Keelcomm.dll"), name);
  }
  static void* LinkFunction(const char* name) {
    return FunctionOf(ImageLibrary("Vantorel/Fendrake/Keellink.dll"), name);
  }

  StorageFunctions com = BindStorage(StorageFunction);
  LinkFunctions link = BindLinks(LinkFunction);
};

}  // namespace quillmar::strict
