#include "session/JobFields.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "drawboard/CodePage.h"

namespace session {

void Refuse(const std::string& field, const std::string& expected) {
  throw JobError(fmt::format("Field \"{}\": {}", field, expected));
}

void RefuseValue(const std::string& field, const std::string& expected, const JobJson& found) {
  Refuse(field, fmt::format("expected {}, found {}", expected, found.dump()));
}

void CheckObject(const JobJson& json, const std::string& field,
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

std::string ReadText(const JobJson& json, const std::string& where, const char* key,
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

void CheckFileName(const std::string& name, const std::string& field) {
  if (name.find_first_of("\\/:*?\"<>|.") == std::string::npos) return;
  RefuseValue(field, "a name that a file can bear, without dots", drawboard::ToUtf8(name));
}

double ReadNumber(const JobJson& json, const std::string& where, const char* key, double fallback) {
  const auto found = json.find(key);
  if (found == json.end()) return fallback;
  if (!found->is_number()) RefuseValue(where + key, "a number", *found);
  return found->get<double>();
}

int ReadWord(const JobJson& json, const std::string& where, const char* key,
             const std::vector<const char*>& words) {
  const auto found = json.find(key);
  if (found == json.end()) return 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (found->is_string() && *found == words[i]) return static_cast<int>(i);
  }
  RefuseValue(where + key, "one of " + Quoted(words), *found);
}

std::string WithPoint(std::string text) {
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

double NumberOf(const std::string& text) { return std::strtod(WithPoint(text).c_str(), nullptr); }

bool AreEqual(double value, double wanted) {
  constexpr double kLost = 1e-7;
  return std::abs(value - wanted) <= kLost * std::max(1.0, std::abs(wanted));
}

namespace {

bool IsNumberText(const std::string& text) {
  const JobJson number = JobJson::parse(WithPoint(text), nullptr, false);
  return number.is_number() && std::isfinite(number.get<double>());
}

std::string ReadInput(const JobJson& value, const std::string& field) {
  if (value.is_number()) return value.dump();
  if (value.is_string() && IsNumberText(value.get<std::string>())) return value.get<std::string>();
  RefuseValue(field, "a number, or a text that holds one", value);
}

// Names become keys of a profile file.
void CheckInputName(const std::string& name, const std::string& field) {
  const bool fit = !name.empty() && name.find_first_of("=[]; ") == std::string::npos;
  if (!fit) Refuse(field, "is no name of an input");
}

}  // namespace

Inputs ReadInputs(const JobJson& json, const std::string& where, const char* key) {
  const std::string field = where + key;
  const auto found = json.find(key);
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

}  // namespace session
