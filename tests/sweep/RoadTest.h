// A calculated protocol that walks the roads of a callback through the finished library, and the
// list of the calls that it leads to.
#pragma once

#include "Contract.h"
#include "support/DebuggerOutput.h"

namespace quillmar::contract {

class RoadTest : public Contract {
 protected:
  RoadTest();

  // A closed protocol of a calculated shaft in which every keyword that the roads read is there,
  // but for those that the roads take as missing. `more` is put into it.
  struct Keyword {
    const char* section;
    const char* keyword;
    std::string value;
  };
  static std::string MakeShaft(const std::vector<Keyword>& more = {});
  // The host has calculated; the module has not heard of it yet.
  void Announce(int code, const std::string& protocolId);

  // The calls since ForgetCalls in their order: storage and link calls with what they ask for, the
  // others by name.
  static std::vector<std::string> Lines();
  // Messages of the reports since the last call.
  std::vector<std::string> Reports();

 private:
  DebuggerOutput debugger;
};

}  // namespace quillmar::contract
