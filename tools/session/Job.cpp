#include "session/Job.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>

#include "drawboard/CodePage.h"

namespace session {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kCalculations[] = {"GEAR1", "SHAFT"};

[[noreturn]] void Refuse(const std::string& field, const std::string& expected) {
  throw JobError(fmt::format("Field \"{}\": {}", field, expected));
}

[[noreturn]] void RefuseValue(const std::string& field, const std::string& expected,
                              const Json& found) {
  Refuse(field, fmt::format("expected {}, found {}", expected, found.dump()));
}

std::string Quoted(std::initializer_list<const char*> names) {
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

Calculation ReadCalculation(const Json& json, const std::string& field,
                            const std::string& standard) {
  CheckObject(json, field, {"name", "calculation", "standard", "inputs"});
  const std::string where = field + ".";
  Calculation calculation;
  calculation.name = ReadText(json, where, "name", nullptr);
  calculation.calculation = ReadText(json, where, "calculation", nullptr);
  const auto known =
      std::find(std::begin(kCalculations), std::end(kCalculations), calculation.calculation);
  if (known == std::end(kCalculations)) {
    RefuseValue(where + "calculation", "\"GEAR1\" or \"SHAFT\"", json["calculation"]);
  }
  calculation.standard = ReadText(json, where, "standard", standard.c_str());
  calculation.inputs = ReadInputs(json, where);
  return calculation;
}

bool Holds(const std::vector<Calculation>& calculations, const std::string& name) {
  return std::any_of(calculations.begin(), calculations.end(),
                     [&](const Calculation& each) { return each.name == name; });
}

void ReadCalculations(const Json& json, Job& job) {
  const auto found = json.find("calculations");
  if (found == json.end()) Refuse("calculations", "is missing");
  if (!found->is_array() || found->empty()) {
    RefuseValue("calculations", "a list of at least one calculation", *found);
  }
  const std::string standard = ReadText(json, "", "standard", "ISO");
  for (std::size_t i = 0; i < found->size(); ++i) {
    const std::string field = fmt::format("calculations[{}]", i);
    Calculation calculation = ReadCalculation((*found)[i], field, standard);
    if (Holds(job.calculations, calculation.name)) {
      Refuse(field + ".name", "another calculation has this name already");
    }
    job.calculations.push_back(std::move(calculation));
  }
}

void ReadChanges(const Json& json, Job& job) {
  const auto found = json.find("changes");
  if (found == json.end()) return;
  if (!found->is_array()) RefuseValue("changes", "a list of changes", *found);
  for (std::size_t i = 0; i < found->size(); ++i) {
    const std::string field = fmt::format("changes[{}]", i);
    const Json& each = (*found)[i];
    CheckObject(each, field, {"name", "inputs"});
    const std::string name = ReadText(each, field + ".", "name", nullptr);
    if (!Holds(job.calculations, name)) {
      RefuseValue(field + ".name", "the name of one of the calculations", each["name"]);
    }
    job.changes.push_back({name, ReadInputs(each, field + ".")});
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
  CheckObject(json, "", {"name", "document", "unit", "standard", "calculations", "changes"});
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
  ReadCalculations(json, job);
  ReadChanges(json, job);
  return job;
}

}  // namespace session
