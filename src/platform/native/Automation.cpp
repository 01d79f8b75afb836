#include "platform/Automation.h"

#include <charconv>
#include <limits>
#include <utility>

#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/System.h"
#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

constexpr const char* kClassesKey = "Software\\Classes\\";
constexpr const char* kEmbedding = " -Embedding";

std::optional<std::string> DefaultValueOf(const std::string& path) {
  std::optional<RegistryHandle> key = OpenKey(Hive::LocalMachine, path);
  std::optional<RegistryValue> value = key ? key->Query("") : std::nullopt;
  if (!value || value->type != RegistryType::Text) return std::nullopt;
  return std::string(value->data.c_str());
}

// "{8-4-4-4-12}" hexadecimal digits.
bool IsClassId(const std::string& text) {
  constexpr std::string_view form = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  constexpr std::string_view digits = "0123456789ABCDEFabcdef";
  if (text.size() != form.size()) return false;
  for (std::size_t i = 0; i < form.size(); ++i) {
    bool fits =
        form[i] == 'x' ? digits.find(text[i]) != std::string_view::npos : text[i] == form[i];
    if (!fits) return false;
  }
  return true;
}

// The system's truth value in automation is -1.
std::optional<int> NumberOf(const AutomationValue& value) {
  if (std::holds_alternative<NoValue>(value)) return 0;
  if (const auto* number = std::get_if<int>(&value)) return *number;
  if (const auto* number = std::get_if<std::int16_t>(&value)) return *number;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? -1 : 0;
  const auto& text = std::get<std::string>(value);
  int number = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  bool whole = error == std::errc() && end == text.data() + text.size();
  return whole ? std::optional(number) : std::nullopt;
}

std::string TextOf(const AutomationValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (std::holds_alternative<NoValue>(value)) return {};
  return std::to_string(NumberOf(value).value_or(0));
}

std::optional<AutomationValue> Convert(const AutomationValue& value, AutomationType type) {
  if (type == AutomationType::None) return AutomationValue();
  if (type == AutomationType::Text) return TextOf(value);
  std::optional<int> number = NumberOf(value);
  if (!number) return std::nullopt;
  if (type == AutomationType::Int) return *number;
  if (type == AutomationType::Bool) return *number != 0;
  using Limits = std::numeric_limits<std::int16_t>;
  if (*number < Limits::min() || *number > Limits::max()) return std::nullopt;
  return static_cast<std::int16_t>(*number);
}

class Reference : public AutomationObject {
 public:
  explicit Reference(std::shared_ptr<RunningObject> referred) : object(std::move(referred)) {}

  AutomationResult Call(int identifier, const AutomationArguments& arguments,
                        AutomationType type) override {
    std::shared_ptr<AutomationServer> server = object ? object->Server() : nullptr;
    if (server == nullptr) return {AutomationStatus::ServerGone, {}, {}};
    AutomationResult result = CallServer(*server, identifier, arguments);
    if (object->Server() == nullptr) return {AutomationStatus::ServerGone, {}, {}};
    if (result.status != AutomationStatus::Done) return result;
    std::optional<AutomationValue> value = Convert(result.value, type);
    if (!value) return {AutomationStatus::Failed, {}, {}};
    result.value = *value;
    return result;
  }

  std::optional<int> FindMember(const std::string& name) override {
    std::shared_ptr<AutomationServer> server = object ? object->Server() : nullptr;
    if (server == nullptr) return std::nullopt;
    return server->FindMember(name);
  }

  void Abandon() override { object.reset(); }

 private:
  static AutomationResult CallServer(AutomationServer& server, int identifier,
                                     const AutomationArguments& arguments) {
    try {
      return server.Call(identifier, arguments);
    } catch (...) {
      return {AutomationStatus::Failed, {}, {}};
    }
  }

  std::shared_ptr<RunningObject> object;
};

std::unique_ptr<AutomationObject> ReferTo(std::shared_ptr<RunningObject> object) {
  if (object == nullptr) return nullptr;
  return std::make_unique<Reference>(std::move(object));
}

// Starts the program that the registry names for the class; it registers its object itself.
bool StartLocalServer(const std::string& classId) {
  std::optional<std::string> command =
      DefaultValueOf(kClassesKey + ("CLSID\\" + classId) + "\\LocalServer32");
  if (!command || command->empty()) return false;
  std::string program = *command;
  if (program.substr(0, 1) == "\"") program = program.substr(1, program.find('"', 1) - 1);
  ProgramStart start;
  start.program = program;
  start.commandLine = *command + kEmbedding;
  return StartProgram(start).has_value();
}

}  // namespace

void InitializeAutomation() {}

std::optional<std::string> FindAutomationClass(const std::string& progId) {
  std::optional<std::string> id = DefaultValueOf(kClassesKey + progId + "\\CLSID");
  if (progId.empty() || !id || !IsClassId(*id)) return std::nullopt;
  return UpperCase(*id);
}

std::unique_ptr<AutomationObject> FindActiveObject(const std::string& classId) {
  return ReferTo(Machine::Current().Internals().automation.Active(classId));
}

std::unique_ptr<AutomationObject> CreateAutomationObject(const std::string& classId) {
  AutomationTable& table = Machine::Current().Internals().automation;
  if (auto active = ReferTo(table.Active(classId))) return active;
  if (auto made = ReferTo(table.Make(classId))) return made;
  if (!StartLocalServer(classId)) return nullptr;
  return ReferTo(table.Active(classId));
}

}  // namespace quillmar::platform
