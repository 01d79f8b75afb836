// Automation objects of other programs: looked up by class, called by dispatch identifier.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillmar::platform {

// Not std::monostate: with it the standard library's variant takes itself for one that always holds
// a value, and destroys garbage when there is no memory to copy a text.
struct NoValue {
  NoValue() = default;
  NoValue(const NoValue&) noexcept {}
  NoValue& operator=(const NoValue&) noexcept { return *this; }
  bool operator==(const NoValue&) const { return true; }
};

// An argument or a result. Texts are in the system code page.
using AutomationValue = std::variant<NoValue, int, std::int16_t, bool, std::string>;
using AutomationArguments = std::vector<AutomationValue>;

enum class AutomationType { None, Int, Short, Bool, Text };

enum class AutomationStatus {
  Done,
  Raised,         // the object raised an error of its own; `description` says which
  UnknownMember,  // the object has no member of that identifier
  ServerGone,     // the object's program is no longer there
  Failed          // anything else: wrong arguments, a result of an unfit type
};

struct AutomationResult {
  AutomationStatus status = AutomationStatus::Failed;
  AutomationValue value;
  std::string description;
};

// A reference to an object; released with this object unless Abandon was called.
class AutomationObject {
 public:
  virtual ~AutomationObject() = default;
  // Calls a method by identifier. The result's value has the type asked for after Done.
  virtual AutomationResult Call(int identifier, const AutomationArguments& arguments,
                                AutomationType result) = 0;
  // Identifier of a member by name, nothing when the object does not know it.
  virtual std::optional<int> FindMember(const std::string& name) = 0;
  // Lets go without releasing: the other program may be gone or busy ending.
  virtual void Abandon() = 0;
};

// Makes automation usable on this thread; may be called any number of times.
void InitializeAutomation();

// Class identifier, "{...}", registered for a ProgID.
std::optional<std::string> FindAutomationClass(const std::string& progId);

// The running object of a class, from the table of active objects; null when there is none.
std::unique_ptr<AutomationObject> FindActiveObject(const std::string& classId);

// A new object of a class, started by the system; null when that fails.
std::unique_ptr<AutomationObject> CreateAutomationObject(const std::string& classId);

}  // namespace quillmar::platform
