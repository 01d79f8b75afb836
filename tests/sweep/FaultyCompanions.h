// Every call that leaves the module in one numbered list, with one place, or all from one place
// on, where calls fail without reaching their companion.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "FaultMode.h"
#include "platform/native/Machine.h"
#include "protocol/ProtocolLibraries.h"
#include "session/CadDriverTable.h"

namespace quillmar::test {

class Calls {
 public:
  static Calls& Get();

  // Forgets all calls; the call of that number (from 1; 0 is none) fails.
  void Begin(int failing, Mode mode);
  // Notes a call; false when it has to fail.
  bool Allow(std::string line);
  const std::vector<std::string>& Lines() const { return lines; }

 private:
  std::vector<std::string> lines;
  int failing = 0;
  Mode mode = Mode::Once;
};

StorageTable FaultyStorage(const StorageTable& real);
LinkTable FaultyLinks(const LinkTable& real);
// A driver whose functions succeed and, where they give a list, give an empty one.
CadDriverTable FaultyDriver();

// A host that answers every method with 1, the callback code and the list of protocols.
class FaultyHost : public platform::AutomationServer {
 public:
  int callbackCode = 0;
  std::string callbackList;

  platform::AutomationResult Call(int identifier,
                                  const platform::AutomationArguments& arguments) override;
  std::optional<int> FindMember(const std::string&) override { return std::nullopt; }
};

}  // namespace quillmar::test
