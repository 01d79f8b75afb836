// The calculation host of the contract tests (the strict set's), seen from the test: started before
// the module looks for one, told what to answer, asked what it was asked.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Automation.h"

namespace quillmar::contract {

class HostSide {
 public:
  // The host beside the add-in, started unless one runs, with nothing answered and nothing noted.
  static HostSide Start();
  // The host that runs, as it is.
  static HostSide Attach();
  static bool Runs();
  HostSide() = default;

  // See strict::HostControl.
  void Answer(const std::string& key, const std::string& answer = "1");
  void Forget();
  // The calls since the start or the last Forget; ready queries are left out.
  std::vector<std::string> Calls() const;
  // The same without the session data that are sent whenever the module connects.
  std::vector<std::string> Commands() const;
  std::string Violations() const;  // one broken promise a line
  bool IsAttached() const { return host != nullptr; }
  // The host has calculated: tells the callback window.
  void Announce(int code, const std::string& protocolList);
  // The same, and lets the module handle it.
  void Finish(int code, const std::string& protocolList);
  void End();
  // A host in a process of its own asks that window before each call, 0: nobody.
  void SetJournal(std::uint32_t window);

 private:
  platform::AutomationResult Control(int method, const platform::AutomationArguments& arguments,
                                     platform::AutomationType result) const;

  std::shared_ptr<platform::AutomationObject> host;
};

}  // namespace quillmar::contract
