// A machine with one suite on it, for tests of the store.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "companions/Suite.h"
#include "support/TestMachine.h"

namespace quillmar::test {

class StoreFixture : public ::testing::Test {
 protected:
  int State(const std::string& id) const { return suite.storage.Com_IsProtocolExists(id.c_str()); }

  std::filesystem::path DatabaseFile() const {
    return machine.HostPath(suite.Folder() + "\\Protocols.db");
  }

  TestMachine machine;
  Suite suite{InstallSuite(machine, "Suite", "[Store]\nWait=50\n")};
};

}  // namespace quillmar::test
