#include "session/Job.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <set>

#include "drawboard/CodePage.h"

namespace session {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kCalculations[] = {"GEAR1", "SHAFT", "CAM", "THRJOIN", "KEYWAY"};

[[noreturn]] void Refuse(const std::string& field, const std::string& expected) {
  throw JobError(fmt::format("Field \"{}\": {}", field, expected));
}

[[noreturn]] void RefuseValue(const std::string& field, const std::string& expected,
                              const Json& found) {
  Refuse(field, fmt::format("expected {}, found {}", expected, found.dump()));
}

template <typename Names>
std::string Quoted(const Names& names) {
  std::string text;
  for (const char* name : names) text += fmt::format("{}\"{}\"", text.empty() ? "" : ", ", name);
  return text;
}

void CheckObject(const Json& json, const std::string& field,
                 std::initializer_list<const char*> known) {
  if (!json.is_object()) RefuseValue(field, "an object", json);
  for (const auto& [name, value] : json.items()) {
    if (std::find(known.begin(), known.end(), name) != known.end()) continue;
    Refuse(field.empty() ? name : field + "." + name,
           "there is no such field here; known are " + Quoted(known));
  }
}

std::string Bytes(const std::string& utf8, const std::string& field) {
  const auto bytes = drawboard::FromUtf8(utf8);
  if (!bytes) Refuse(field, "holds a character that Windows-1250 lacks");
  const auto control = [](unsigned char character) { return character < 0x20; };
  if (std::any_of(bytes->begin(), bytes->end(), control)) {
    Refuse(field, "must not hold control characters");
  }
  return *bytes;
}

// The text of a field; the fallback when it is not there.
std::string ReadText(const Json& json, const std::string& where, const char* key,
                     const char* fallback) {
  const auto found = json.find(key);
  if (found == json.end()) {
    if (fallback == nullptr) Refuse(where + key, "is missing");
    return fallback;
  }
  if (!found->is_string()) RefuseValue(where + key, "a text", *found);
  const std::string text = Bytes(found->get<std::string>(), where + key);
  if (text.empty()) RefuseValue(where + key, "a text that is not empty", *found);
  return text;
}

bool IsNumberText(std::string text) {
  std::replace(text.begin(), text.end(), ',', '.');
  const Json number = Json::parse(text, nullptr, false);
  return number.is_number() && std::isfinite(number.get<double>());
}

std::string ReadInput(const Json& value, const std::string& field) {
  if (value.is_number()) return value.dump();
  if (value.is_string() && IsNumberText(value.get<std::string>())) return value.get<std::string>();
  RefuseValue(field, "a number, or a text that holds one", value);
}

// Names become keys of a profile file.
void CheckInputName(const std::string& name, const std::string& field) {
  const bool fit = !name.empty() && name.find_first_of("=[]; ") == std::string::npos;
  if (!fit) Refuse(field, "is no name of an input");
}

Inputs ReadInputs(const Json& json, const std::string& where) {
  const std::string field = where + "inputs";
  const auto found = json.find("inputs");
  if (found == json.end()) Refuse(field, "is missing");
  if (!found->is_object()) RefuseValue(field, "an object with a value for each input", *found);
  Inputs inputs;
  for (const auto& [name, value] : found->items()) {
    const std::string place = field + "." + name;
    CheckInputName(name, place);
    inputs.emplace_back(Bytes(name, place), ReadInput(value, place));
  }
  return inputs;
}

// What the readers of steps need to know of the job.
struct Reading {
  std::string standard;           // of calculations that name none
  std::set<std::string> started;  // names of calculations so far
};

Step ReadCalculation(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "calculation", "standard", "on", "inputs"});
  const std::string where = field + ".";
  Calculation step;
  step.name = ReadText(json, where, "name", nullptr);
  step.calculation = ReadText(json, where, "calculation", nullptr);
  const auto known =
      std::find(std::begin(kCalculations), std::end(kCalculations), step.calculation);
  if (known == std::end(kCalculations)) {
    RefuseValue(where + "calculation", "one of " + Quoted(kCalculations), json["calculation"]);
  }
  step.standard = ReadText(json, where, "standard", reading.standard.c_str());
  if (json.contains("on")) {
    step.on = ReadText(json, where, "on", nullptr);
    if (reading.started.count(step.on) == 0) {
      RefuseValue(where + "on", "the name of a calculation before this one", json["on"]);
    }
  }
  step.inputs = ReadInputs(json, where);
  if (!reading.started.insert(step.name).second) {
    Refuse(where + "name", "another calculation has this name already");
  }
  return step;
}

Step ReadChange(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "inputs"});
  const std::string name = ReadText(json, field + ".", "name", nullptr);
  if (reading.started.count(name) == 0) {
    RefuseValue(field + ".name", "the name of one of the calculations", json["name"]);
  }
  return Change{name, ReadInputs(json, field + ".")};
}

Step ReadSettings(const Json& json, const std::string& field, Reading&) {
  CheckObject(json, field, {"key", "values"});
  Settings step;
  step.key = ReadText(json, field + ".", "key", nullptr);
  const auto found = json.find("values");
  if (found == json.end()) Refuse(field + ".values", "is missing");
  if (!found->is_object()) RefuseValue(field + ".values", "an object of texts and numbers", *found);
  for (const auto& [name, value] : found->items()) {
    const std::string place = field + ".values." + name;
    if (value.is_string()) {
      step.values.push_back({Bytes(name, place), Bytes(value.get<std::string>(), place)});
    } else if (value.is_number_unsigned() && value.get<std::uint64_t>() <= UINT32_MAX) {
      step.values.push_back({Bytes(name, place), value.get<std::uint32_t>()});
    } else {
      RefuseValue(place, "a text, or a whole number not below 0", value);
    }
  }
  return step;
}

Step ReadNewLogin(const Json& json, const std::string& field, Reading&) {
  CheckObject(json, field, {});
  return NewLogin{};
}

using StepReader = Step (*)(const Json& json, const std::string& field, Reading& reading);

// Steps by the word that a job's "do" names them with.
constexpr std::pair<const char*, StepReader> kSteps[] = {
    {"calculate", ReadCalculation},
    {"change", ReadChange},
    {"settings", ReadSettings},
    {"log in again", ReadNewLogin},
};

Step ReadStep(const Json& json, const std::string& field, Reading& reading) {
  if (!json.is_object()) RefuseValue(field, "an object", json);
  const std::string word = ReadText(json, field + ".", "do", nullptr);
  const auto known = std::find_if(std::begin(kSteps), std::end(kSteps),
                                  [&](const auto& step) { return step.first == word; });
  if (known == std::end(kSteps)) {
    std::vector<const char*> words;
    for (const auto& step : kSteps) words.push_back(step.first);
    RefuseValue(field + ".do", "one of " + Quoted(words), json["do"]);
  }
  Json rest = json;
  rest.erase("do");
  return known->second(rest, field, reading);
}

// Reads the list `key` of the job, each of whose items becomes a step. Without one nothing is read.
void ReadSteps(const Json& json, const char* key, const std::string& expected, StepReader read,
               Reading& reading, Job& job) {
  const auto found = json.find(key);
  if (found == json.end()) return;
  if (!found->is_array()) RefuseValue(key, expected, *found);
  for (std::size_t i = 0; i < found->size(); ++i) {
    job.steps.push_back(read((*found)[i], fmt::format("{}[{}]", key, i), reading));
  }
}

Json Parse(const std::string& text) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const std::size_t place = std::min(error.byte > 0 ? error.byte - 1 : 0, text.size());
    const auto line = std::count(text.begin(), text.begin() + static_cast<long>(place), '\n') + 1;
    const std::string rest = text.substr(place, text.find('\n', place) - place);
    throw JobError(fmt::format("The job is not JSON: line {} is wrong {}", line,
                               rest.empty() ? "at its end" : "at or just before: " + rest));
  }
}

}  // namespace

Job ReadJob(const std::string& text) {
  const Json json = Parse(text);
  if (!json.is_object()) throw JobError("The job must be a JSON object");
  CheckObject(json, "",
              {"name", "document", "unit", "standard", "steps", "calculations", "changes"});
  Job job;
  job.name = ReadText(json, "", "name", "Session");
  job.document = ReadText(json, "", "document", "Session");
  if (job.document.find_first_of("\\/:*?\"<>|.") != std::string::npos) {
    RefuseValue("document", "a name that a file can bear, without dots", json["document"]);
  }
  job.unit = ReadText(json, "", "unit", "mm");
  if (job.unit != "mm" && job.unit != "in") {
    RefuseValue("unit", "\"mm\" or \"in\"", json["unit"]);
  }
  Reading reading;
  reading.standard = ReadText(json, "", "standard", "ISO");
  const bool plain = json.contains("calculations");
  if (plain == json.contains("steps")) {
    Refuse("steps", "a job has either steps, or calculations and changes");
  }
  ReadSteps(json, "steps", "a list of steps", ReadStep, reading, job);
  ReadSteps(json, "calculations", "a list of calculations", ReadCalculation, reading, job);
  if (job.steps.empty()) {
    RefuseValue(plain ? "calculations" : "steps", "a list that is not empty", Json::array());
  }
  ReadSteps(json, "changes", "a list of changes", ReadChange, reading, job);
  return job;
}

}  // namespace session
