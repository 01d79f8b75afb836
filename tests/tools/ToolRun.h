// Runs a tool as a user does, on a machine with a store.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "companions/Suite.h"
#include "support/TestMachine.h"

namespace quillmar::test {

struct Ran {
  int status = -1;     // exit status; 128 + signal when it was killed
  std::string output;  // both streams
};

// A command of the shell.
Ran RunLine(const std::string& line);
// `arguments` are words for the shell.
Ran RunTool(const std::string& tool, const std::string& arguments);

class StoreTool : public testing::Test {
 protected:
  Ran Store(const std::string& arguments) { return RunTool("quillmar-store", Place() + arguments); }
  // Options that name the store of the test.
  std::string Place() const;
  // A folder of the system that goes with the machine.
  std::string Folder() const { return machine.HostPath(machine.Folder()).string(); }

  struct Datum {
    const char* name;
    const char* value;
    const char* unit;
  };
  // A stored protocol of a calculation with data parameters.
  std::string Make(const std::string& dataFile, int major, const std::string& viewKey,
                   const std::vector<Datum>& data) const;
  std::size_t Count();
  // "major.minor view name=value unit ...".
  std::string Contents(const std::string& id, const std::vector<const char*>& names) const;

  TestMachine machine;
  Suite suite{InstallSuite(machine, "Suite")};
};

}  // namespace quillmar::test
