#include "host/HostBrain.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "quillmar/CalculationHost.h"

namespace quillmar::strict {
namespace {

using platform::AutomationArguments;
using platform::AutomationType;
using platform::AutomationValue;

constexpr std::chrono::milliseconds kTimeToHandleAMessage{100};

// Arguments: 't' a text, 'i' an integer.
struct Method {
  int identifier;
  const char* arguments;
  AutomationType result;
  const char* name;  // null: called by identifier only
};

constexpr Method kMethods[] = {
    {QM_HOST_SHOW_CALCULATION, "t", AutomationType::Int, nullptr},
    {QM_HOST_CALLBACK_CODE, "", AutomationType::Int, nullptr},
    {QM_HOST_CALLBACK_LIST, "", AutomationType::Text, nullptr},
    {QM_HOST_IS_READY, "", AutomationType::Int, nullptr},
    {QM_HOST_COMMAND, "i", AutomationType::Int, nullptr},
    {QM_HOST_WRITE_FILE, "ti", AutomationType::Short, nullptr},
    {QM_HOST_RUN_COMMAND, "t", AutomationType::Int, nullptr},
    {QM_HOST_SESSION, "ittt", AutomationType::None, nullptr},
    {QM_HOST_SHOW_FLAG, "i", AutomationType::Int, nullptr},
    {QM_HOST_COMPANION_FOLDER, "", AutomationType::Text, nullptr},
    {QM_HOST_SETTINGS_NAME, "t", AutomationType::Int, nullptr},
    {QM_HOST_ANNOUNCE, "t", AutomationType::Int, nullptr},
    {QM_HOST_SOLVE_ONE_LINK, "tt", AutomationType::Int, nullptr},
    {QM_HOST_INIT_SOLUTION, "t", AutomationType::Int, nullptr},
    {QM_HOST_DRAWN, "t", AutomationType::Int, nullptr},
    {QM_HOST_END_SOLUTION, "", AutomationType::None, nullptr},
    {QM_HOST_SYNCHRONIZE, "ti", AutomationType::Int, nullptr},
    {QM_HOST_EDIT_ONE_LINK, "tt", AutomationType::Int, nullptr},
    {QM_HOST_EDIT_LINKS, "t", AutomationType::Int, nullptr},
    {QM_HOST_SET_CAD_SPECIFIC, "tt", AutomationType::Int, QM_HOST_NAME_SET_CAD_SPECIFIC},
    {QM_HOST_UPDATE_ALL, "", AutomationType::None, nullptr},
    {QM_HOST_SET_SMART_MODE, "i", AutomationType::None, QM_HOST_NAME_SET_SMART_MODE},
    {QM_HOST_SET_CAD_WINDOW, "i", AutomationType::Int, QM_HOST_NAME_SET_CAD_WINDOW},
    {QM_HOST_FAMILY_TABLE, "tt", AutomationType::Int, QM_HOST_NAME_FAMILY_TABLE},
    {QM_HOST_UPDATE_EXT_DATA, "ti", AutomationType::Bool, QM_HOST_NAME_UPDATE_EXT_DATA},
};

const Method* FindMethod(int identifier) {
  const auto* found = std::find_if(std::begin(kMethods), std::end(kMethods),
                                   [&](const Method& m) { return m.identifier == identifier; });
  return found == std::end(kMethods) ? nullptr : found;
}

char KindOf(const AutomationValue& value) {
  if (std::holds_alternative<std::string>(value)) return 't';
  return std::holds_alternative<int>(value) ? 'i' : '?';
}

std::string Shown(int identifier, const AutomationArguments& arguments, std::string& kinds) {
  std::string shown = std::to_string(identifier) + "(";
  for (const AutomationValue& value : arguments) {
    if (!kinds.empty()) shown += ",";
    kinds += KindOf(value);
    switch (kinds.back()) {
      case 't':
        shown += '"' + std::get<std::string>(value) + '"';
        break;
      case 'i':
        shown += std::to_string(std::get<int>(value));
        break;
      default:
        shown += "?";
    }
  }
  return shown + ")";
}

AutomationValue Converted(const std::string& answer, AutomationType type) {
  const int number = std::atoi(answer.c_str());
  switch (type) {
    case AutomationType::None:
      return {};
    case AutomationType::Int:
      return number;
    case AutomationType::Short:
      return static_cast<std::int16_t>(number);
    case AutomationType::Bool:
      return number != 0;
    case AutomationType::Text:
      return answer;
  }
  return {};
}

}  // namespace

HostBrain::HostBrain(std::function<bool(std::uint32_t window)> postCallback,
                     std::function<bool(std::uint32_t window, int identifier)> refuses)
    : postCallback(std::move(postCallback)), refuses(std::move(refuses)) {}

HostBrain::Reply HostBrain::Call(int identifier, const AutomationArguments& arguments) {
  if (identifier >= kHostSetAnswer) return Control(identifier, arguments);
  if (refuses && refuses(journalWindow, identifier)) return {Outcome::Failed, {}, {}};

  std::string kinds;
  const std::string call = Shown(identifier, arguments, kinds);
  calls.push_back(call);
  const Method* method = FindMethod(identifier);
  if (method == nullptr) {
    violations += call + ": no such method\n";
    return {Outcome::UnknownMember, {}, {}};
  }
  if (kinds != method->arguments) {
    violations += call + ": wants arguments (" + method->arguments + ")\n";
    return {Outcome::Failed, {}, {}};
  }
  if (method->name != nullptr && !FindMember(method->name)) {
    violations += call + ": not offered\n";
    return {Outcome::UnknownMember, {}, {}};
  }

  const std::string number = std::to_string(identifier);
  if (Answer("die " + number) != nullptr) return {Outcome::Dies, {}, {}};
  if (const std::string* description = Answer("raise " + number)) {
    return {Outcome::Raised, {}, *description};
  }
  if (identifier == QM_HOST_SESSION) {
    callbackWindow = static_cast<std::uint32_t>(
        std::strtol(std::get<std::string>(arguments[1]).c_str(), nullptr, 10));
  }
  if (answers.erase("post " + number) != 0 && callbackWindow != 0 && postCallback(callbackWindow)) {
    std::this_thread::sleep_for(kTimeToHandleAMessage);
  }
  const std::string* answer = Answer(number);
  const std::string unlessAnswered = identifier == QM_HOST_IS_READY ? "1" : "";
  return {
      Outcome::Done, Converted(answer == nullptr ? unlessAnswered : *answer, method->result), {}};
}

std::optional<int> HostBrain::FindMember(const std::string& name) const {
  if (Answer("refuse " + name) != nullptr) return std::nullopt;
  const auto* found = std::find_if(std::begin(kMethods), std::end(kMethods), [&](const Method& m) {
    return m.name != nullptr && name == m.name;
  });
  if (found == std::end(kMethods)) return std::nullopt;
  return found->identifier;
}

HostBrain::Reply HostBrain::Control(int identifier, const AutomationArguments& arguments) {
  const auto text = [&](std::size_t i) {
    return i < arguments.size() && KindOf(arguments[i]) == 't' ? std::get<std::string>(arguments[i])
                                                               : std::string();
  };
  const auto number = [&](std::size_t i) {
    return i < arguments.size() && KindOf(arguments[i]) == 'i' ? std::get<int>(arguments[i]) : -1;
  };
  Reply reply{Outcome::Done, {}, {}};
  switch (identifier) {
    case kHostSetAnswer:
      answers[text(0)] = text(1);
      break;
    case kHostDropAnswer:
      answers.erase(text(0));
      break;
    case kHostCallCount:
      reply.value = static_cast<int>(calls.size());
      break;
    case kHostCall: {
      const auto index = static_cast<std::size_t>(number(0));
      reply.value = index < calls.size() ? calls[index] : std::string();
      break;
    }
    case kHostViolations:
      reply.value = violations;
      break;
    case kHostFinish:
      reply.value = Finish(number(0), text(1)) ? 1 : 0;
      break;
    case kHostForget:
      calls.clear();
      answers.clear();
      break;
    case kHostSetJournal:
      journalWindow = static_cast<std::uint32_t>(number(0));
      break;
    case kHostEnd:
      reply.outcome = Outcome::Ends;
      break;
    default:
      reply.outcome = Outcome::UnknownMember;
  }
  return reply;
}

bool HostBrain::Finish(int code, const std::string& list) {
  answers[std::to_string(QM_HOST_CALLBACK_CODE)] = std::to_string(code);
  answers[std::to_string(QM_HOST_CALLBACK_LIST)] = list;
  return callbackWindow != 0 && postCallback(callbackWindow);
}

const std::string* HostBrain::Answer(const std::string& key) const {
  const auto found = answers.find(key);
  return found == answers.end() ? nullptr : &found->second;
}

}  // namespace quillmar::strict
