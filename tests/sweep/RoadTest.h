// The roads through the finished library, and the list of the calls that each leads to.
#pragma once

#include <functional>

#include "Contract.h"
#include "Procedure.h"
#include "support/DebuggerOutput.h"

namespace quillmar::contract {

class RoadTest;

struct Road {
  const char* name;
  // Puts into the store and the CAD what the road meets, and gives what walks it.
  std::function<int()> (*begin)(RoadTest& test);
  // What the fault sweep compares with.
  test::Procedure (*procedure)() = nullptr;
};

std::vector<Road> Roads();
// Of those whose reports are not written down call by call.
std::vector<Road> RoadsWithoutDialogs();

class RoadTest : public Contract {
 public:
  // The host has calculated; the module has not heard of it yet.
  std::function<int()> Callback(int code, const std::string& protocolId);
  // A command that waits in the queue.
  std::function<int()> Queued(int number);
  const Exports& Module() const { return module; }
  HostSide& Host() { return host; }

 protected:
  RoadTest();

  // Nothing is left of another road.
  std::function<int()> Begin(const Road& road);
  // The calls since Begin in their order: storage and link calls with what they ask for, the others
  // by name.
  static std::vector<std::string> Lines();
  // Messages of the reports since the last call.
  std::vector<std::string> Reports();

 private:
  DebuggerOutput debugger;
};

}  // namespace quillmar::contract
