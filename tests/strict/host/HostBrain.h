// The strict calculation host without its automation: calculates nothing, answers what it was told
// to answer, checks what it is asked, and keeps a journal of it.
//
// A test steers it through further methods of the automation object, see HostControl.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Automation.h"

namespace quillmar::strict {

// Identifiers of the methods for tests. They leave no trace in the journal.
//
// Answers, by key ("<id>" is a dispatch identifier in decimal):
//   "<id>"           the result of the method
//   "raise <id>"     the method raises an error with the answer as its description
//   "die <id>"       the host dies in the middle of that method, whatever the answer
//   "post <id>"      during the next call of that method the host tells the callback window that it
//                    has calculated; a caller that waits in another process handles that at once
//   "refuse <name>"  the host does not know the method of that name, whatever the answer
// Unless answered otherwise the host is ready and every other result is 0 or empty.
enum HostControl {
  kHostSetAnswer = 0x7001,   // text key, text answer -> none
  kHostDropAnswer = 0x7002,  // text key -> none
  kHostCallCount = 0x7003,   // none -> int
  kHostCall = 0x7004,        // int index -> text: identifier(arguments), texts in double quotes
  kHostViolations = 0x7005,  // none -> text: one broken promise a line
  kHostFinish = 0x7006,      // int code, text list -> int: the host has calculated; 1 when the
                             //   callback window was told so
  kHostForget = 0x7007,      // none -> none: journal and answers; window and violations stay
  kHostEnd = 0x7008,         // none -> none: the host ends as if the user closed it
  kHostSetJournal = 0x7009   // int window -> none: a host in a process of its own asks that window
                             //   before each call, see kHostAsksMessage; 0: nobody
};

// With the call's identifier as the first parameter; the call fails where the answer is not 0.
inline constexpr std::uint32_t kHostAsksMessage = 0x8001;  // private to the two programs

class HostBrain {
 public:
  enum class Outcome { Done, Raised, UnknownMember, Failed, Dies, Ends };
  struct Reply {
    Outcome outcome = Outcome::Failed;
    platform::AutomationValue value;
    std::string description;
  };

  // `postCallback` posts QM_MESSAGE_CALLBACK to a window. `refuses` enters a call into the journal
  // of the process that tests the host's caller and tells whether the call has to fail; it is given
  // the window of kHostSetJournal.
  explicit HostBrain(std::function<bool(std::uint32_t window)> postCallback,
                     std::function<bool(std::uint32_t window, int identifier)> refuses = {});

  Reply Call(int identifier, const platform::AutomationArguments& arguments);
  std::optional<int> FindMember(const std::string& name) const;

 private:
  Reply Control(int identifier, const platform::AutomationArguments& arguments);
  bool Finish(int code, const std::string& list);
  const std::string* Answer(const std::string& key) const;

  std::function<bool(std::uint32_t window)> postCallback;
  std::function<bool(std::uint32_t window, int identifier)> refuses;
  std::map<std::string, std::string> answers;
  std::vector<std::string> calls;
  std::string violations;
  std::uint32_t callbackWindow = 0;
  std::uint32_t journalWindow = 0;
};

}  // namespace quillmar::strict
