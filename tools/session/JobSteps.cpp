#include "session/JobSteps.h"

#include <algorithm>
#include <type_traits>

#include "drawboard/CodePage.h"

namespace session {
namespace {

using Json = JobJson;

constexpr const char* kCalculations[] = {"GEAR1",  "SHAFT",   "CAM",   "THRJOIN",
                                         "KEYWAY", "SURFACE", "SLEEVE"};
// Kinds of objects that an older document may hold.
constexpr const char* kOldKinds[] = {"part", "parametric part", "shaft", "feature", "cam"};

std::string ReadOneOf(const Json& json, const std::string& where, const char* key,
                      const auto& words) {
  const std::string text = ReadText(json, where, key, nullptr);
  if (std::find(std::begin(words), std::end(words), text) == std::end(words)) {
    RefuseValue(where + key, "one of " + Quoted(words), json[key]);
  }
  return text;
}

// The name of a step, which no other has.
std::string ReadOwnName(const Json& json, const std::string& where, Reading& reading) {
  const std::string name = ReadText(json, where, "name", nullptr);
  if (!reading.names.insert(name).second) {
    Refuse(where + "name", "another step has this name already");
  }
  return name;
}

// The name of an earlier step, one of `known`.
std::string ReadKnownName(const Json& json, const std::string& where, const char* key,
                          const std::set<std::string>& known, const char* expected) {
  const std::string name = ReadText(json, where, key, nullptr);
  if (known.count(name) == 0) RefuseValue(where + key, expected, json[key]);
  return name;
}

// Names of objects; what else a saved job says about them is for people.
std::vector<std::string> ReadObjects(const Json& json, const std::string& where) {
  std::vector<std::string> names;
  const auto found = json.find("objects");
  if (found == json.end()) return names;
  const std::string field = where + "objects";
  if (!found->is_object()) RefuseValue(field, "an object with the names of objects", *found);
  for (const auto& [name, unused] : found->items()) names.push_back(Bytes(name, field));
  return names;
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

// Other inputs of an earlier calculation.
template <typename Kind>
Step ReadInputsOf(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "inputs"});
  const std::string name = ReadKnownName(json, field + ".", "name", reading.started,
                                         "the name of one of the calculations");
  return Kind{name, ReadInputs(json, field + ".")};
}

template <typename Kind>
Step ReadBare(const Json& json, const std::string& field, Reading&) {
  CheckObject(json, field, {});
  return Kind{};
}

Step ReadGroup(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "members", "objects"});
  const std::string where = field + ".";
  Group step;
  step.name = ReadOwnName(json, where, reading);
  const auto found = json.find("members");
  if (found == json.end()) Refuse(where + "members", "is missing");
  if (!found->is_array() || found->empty()) {
    RefuseValue(where + "members", "a list of calculations that is not empty", *found);
  }
  for (std::size_t i = 0; i < found->size(); ++i) {
    const std::string place = fmt::format("{}members[{}]", where, i);
    const Json& member = (*found)[i];
    CheckObject(member, place, {"calculation", "inputs"});
    step.members.push_back({ReadOneOf(member, place + ".", "calculation", kCalculations),
                            ReadInputs(member, place + ".")});
  }
  step.objects = ReadObjects(json, where);
  reading.groups.insert(step.name);
  return step;
}

Step ReadAssembly(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "objects"});
  return Assembly{ReadOwnName(json, field + ".", reading), ReadObjects(json, field + ".")};
}

// A drawing, a picture.
template <typename Made>
Step ReadMadeOf(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "of", "objects"});
  const std::string where = field + ".";
  Made step;
  step.name = ReadOwnName(json, where, reading);
  step.of = ReadKnownName(json, where, "of", reading.started,
                          "the name of a calculation before this one");
  step.objects = ReadObjects(json, where);
  return step;
}

Step ReadFormat(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "standard", "scale", "objects"});
  const std::string where = field + ".";
  Format step;
  step.name = ReadOwnName(json, where, reading);
  step.standard = ReadText(json, where, "standard", reading.standard.c_str());
  step.scale = ReadNumber(json, where, "scale", 1);
  if (!(step.scale > 0)) RefuseValue(where + "scale", "a number above 0", json["scale"]);
  step.objects = ReadObjects(json, where);
  return step;
}

Step ReadOldPart(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "calculation", "standard", "kind", "values", "objects"});
  const std::string where = field + ".";
  OldPart step;
  step.name = ReadOwnName(json, where, reading);
  step.calculation = ReadOneOf(json, where, "calculation", kCalculations);
  step.standard = ReadText(json, where, "standard", reading.standard.c_str());
  step.kind = ReadOneOf(json, where, "kind", kOldKinds);
  step.values = ReadInputs(json, where, "values");
  step.objects = ReadObjects(json, where);
  reading.started.insert(step.name);
  return step;
}

Step ReadUserPart(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "views", "unit", "x", "y", "as", "objects"});
  const std::string where = field + ".";
  UserPart step;
  step.name = ReadOwnName(json, where, reading);
  CheckFileName(step.name, where + "name");
  step.views = ReadText(json, where, "views", "USER");
  step.units = ReadWord(json, where, "unit", {"mm", "in"});
  step.x = ReadNumber(json, where, "x", 0);
  step.y = ReadNumber(json, where, "y", 0);
  const int as = ReadWord(json, where, "as", {"LISP", "DXF"});
  step.description = as == 0 ? UserPart::Description::Lisp : UserPart::Description::Dxf;
  step.objects = ReadObjects(json, where);
  return step;
}

Step ReadGroupManager(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name"});
  return GroupManager{ReadKnownName(json, field + ".", "name", reading.groups,
                                    "the name of a group before this step")};
}

// A command on the first part of an earlier calculation, of which it makes a calculation.
template <typename Kind>
Step ReadPartCommand(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "of", "inputs", "objects"});
  const std::string where = field + ".";
  Kind step;
  step.of = ReadKnownName(json, where, "of", reading.started,
                          "the name of a calculation before this one");
  step.name = ReadOwnName(json, where, reading);
  step.inputs = ReadInputs(json, where);
  step.objects = ReadObjects(json, where);
  reading.started.insert(step.name);
  return step;
}

// A row for each kind of step, in the order of the alternatives of Step.
struct StepKind {
  const char* word;
  StepReader read;
};
constexpr StepKind kSteps[] = {
    {"calculate", ReadCalculation},
    {"change", ReadChange},
    {"settings", ReadSettings},
    {"log in again", ReadBare<NewLogin>},
    {"group", ReadGroup},
    {"assembly", ReadAssembly},
    {"drawing", ReadMadeOf<Drawing>},
    {"picture", ReadMadeOf<Picture>},
    {"format", ReadFormat},
    {"old part", ReadOldPart},
    {"user part", ReadUserPart},
    {"refresh links", ReadBare<LinkRefresh>},
    {"refresh bill", ReadBare<BillRefresh>},
    {"group manager", ReadGroupManager},
    {"update", ReadInputsOf<Update>},
    {"copy", ReadPartCommand<Copy>},
    {"replace", ReadPartCommand<Replace>},
};
static_assert(std::size(kSteps) == std::variant_size_v<Step>);

// What people read behind the name.
std::string Detail(const Calculation& step) { return "calculate " + step.calculation; }
std::string Detail(const Change&) { return "change inputs"; }
std::string Detail(const Settings& step) { return "options of the user: " + step.key; }
std::string Detail(const NewLogin&) { return "log in again"; }
std::string Detail(const Group& step) {
  return fmt::format("a group of {} calculation{}", step.members.size(),
                     step.members.size() == 1 ? "" : "s");
}
std::string Detail(const Assembly&) { return "connect the assembly"; }
std::string Detail(const Drawing& step) { return "draw " + step.of; }
std::string Detail(const Picture& step) { return "make a picture of " + step.of; }
std::string Detail(const Format& step) {
  return fmt::format("a sheet format, scale {}", step.scale);
}
std::string Detail(const OldPart& step) {
  return "open a part of an older document, " + step.calculation;
}
std::string Detail(const UserPart&) { return "make a user part of the model"; }
std::string Detail(const LinkRefresh&) { return "refresh all links"; }
std::string Detail(const Update&) { return "update the selected part"; }
std::string Detail(const Copy& step) { return "copy " + step.of; }
std::string Detail(const Replace& step) { return "replace " + step.of; }
std::string Detail(const BillRefresh&) { return "refresh the bill of materials"; }
std::string Detail(const GroupManager&) { return "let the group manager solve it"; }

}  // namespace

Step ReadCalculation(const Json& json, const std::string& field, Reading& reading) {
  CheckObject(json, field, {"name", "calculation", "standard", "on", "inputs", "objects"});
  const std::string where = field + ".";
  Calculation step;
  step.name = ReadText(json, where, "name", nullptr);
  step.calculation = ReadOneOf(json, where, "calculation", kCalculations);
  step.standard = ReadText(json, where, "standard", reading.standard.c_str());
  if (json.contains("on")) {
    step.on = ReadKnownName(json, where, "on", reading.started,
                            "the name of a calculation before this one");
  }
  step.inputs = ReadInputs(json, where);
  step.objects = ReadObjects(json, where);
  ReadOwnName(json, where, reading);
  reading.started.insert(step.name);
  return step;
}

Step ReadChange(const Json& json, const std::string& field, Reading& reading) {
  return ReadInputsOf<Change>(json, field, reading);
}

Step ReadStep(const Json& json, const std::string& field, Reading& reading) {
  if (!json.is_object()) RefuseValue(field, "an object", json);
  const std::string word = ReadText(json, field + ".", "do", nullptr);
  const auto known = std::find_if(std::begin(kSteps), std::end(kSteps),
                                  [&](const auto& step) { return step.word == word; });
  if (known == std::end(kSteps)) {
    std::vector<const char*> words;
    for (const auto& step : kSteps) words.push_back(step.word);
    RefuseValue(field + ".do", "one of " + Quoted(words), json["do"]);
  }
  Json rest = json;
  rest.erase("do");
  return known->read(rest, field, reading);
}

const char* WordOf(const Step& step) { return kSteps[step.index()].word; }

std::string NameOf(const Step& step) {
  return std::visit(
      [](const auto& kind) {
        if constexpr (requires { kind.name; }) return kind.name;
        return std::string();
      },
      step);
}

std::string TitleOf(const Step& step) {
  const std::string name = NameOf(step);
  const std::string detail = std::visit([](const auto& kind) { return Detail(kind); }, step);
  return drawboard::ToUtf8(name.empty() ? detail : name + ": " + detail);
}

const std::vector<std::string>* ObjectsOf(const Step& step) {
  return std::visit(
      [](const auto& kind) -> const std::vector<std::string>* {
        if constexpr (requires { kind.objects; }) return &kind.objects;
        return nullptr;
      },
      step);
}

}  // namespace session
