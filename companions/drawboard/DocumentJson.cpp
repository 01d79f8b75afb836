#include "drawboard/DocumentJson.h"

#include <array>

#include "drawboard/BoardError.h"
#include "drawboard/CodePage.h"
#include "drawboard/Folders.h"
#include "drawboard/OrderedJson.h"
#include "platform/System.h"

namespace drawboard {
namespace {

using quillmar::platform::EqualsNoCase;
using quillmar::platform::LowerCase;
using Json = OrderedJson;

constexpr int kFormat = 1;
constexpr const char* kFormatKey = "drawboard";
constexpr const char* kPartFormatKey = "drawboardPart";

// ---- writing

Json Text(const std::string& bytes) { return ToUtf8(bytes); }

// As an object with the names as keys. Each is appended: looking for it first would take time
// that grows with the square of the count.
Json Texts(const NamedTexts& items) {
  Json json = Json::object();
  auto& object = json.get_ref<Json::object_t&>();
  for (const NamedText& item : items) object.emplace_back(ToUtf8(item.name), Text(item.value));
  return json;
}

Json Names(const std::vector<std::string>& names) {
  Json json = Json::array();
  for (const std::string& name : names) json.push_back(Text(name));
  return json;
}

const char* UnitWord(Unit unit) { return unit == Unit::Inch ? "in" : "mm"; }

// The part's own data, the same in the document and in the part file.
void PutPartData(Json& json, const BoardObject& object) {
  json["caption"] = Text(object.caption);
  json["modelPath"] = Text(object.modelPath);
  json["view"] = Text(object.view);
  json["parameters"] = Texts(object.parameters);
  json["cadParameters"] = Names(object.cadParameters);
  json["extendedData"] = Texts(object.extendedData);
  json["featureStates"] = Texts(object.featureStates);
  json["configurations"] = {{"active", Text(object.configurations.active)},
                            {"names", Names(object.configurations.names)}};
  if (object.profile) {
    json["profile"] = {{"baseValue", object.profile->baseValue},
                       {"baseUnit", Text(object.profile->baseUnit)},
                       {"first", object.profile->first},
                       {"second", object.profile->second}};
  }
}

void PutComputed(Json& json, const BoardObject& object, const Document& document,
                 const Kernel& kernel) {
  const PartDescription part = DescribePart(object, document);
  if (const auto mass = kernel.Weigh(part)) {
    json["physicalProperties"] = Texts(PhysicalPropertyTexts(*mass));
  }
  const NamedTexts measured = kernel.Measure(part);
  if (!measured.empty()) json["measured"] = Texts(measured);
}

Json ObjectToJson(const BoardObject& object, const Document& document, const Kernel& kernel) {
  Json json;
  json["name"] = Text(object.name);
  json["kind"] = KindWord(object.kind);
  json["protocolId"] = Text(object.protocolId);
  json["formerIds"] = Names(object.formerIds);
  json["local"] = object.local;
  json["filePath"] = Text(object.filePath);
  json["file"] = Text(object.file);
  json["viewOf"] = Text(object.viewOf);
  json["featureOf"] = Text(object.featureOf);
  json["visible"] = object.visible;
  json["changes"] = object.changes;
  PutPartData(json, object);
  if (object.placement) {
    const Placement& placement = *object.placement;
    json["placement"] = {{"drawingFile", Text(placement.drawingFile)},
                         {"metric", placement.metric},
                         {"x", placement.x},
                         {"y", placement.y},
                         {"level", placement.level},
                         {"namePrefix", Text(placement.namePrefix)},
                         {"scale", placement.scale}};
  }
  PutComputed(json, object, document, kernel);
  json["connection"] = Text(object.connection);
  return json;
}

// ---- reading

[[noreturn]] void Refuse(const std::string& field, const std::string& why) {
  throw BoardError("The document's field \"" + field + "\" " + why);
}

const Json& Member(const Json& json, const char* key, const std::string& where) {
  const auto found = json.find(key);
  if (found == json.end()) Refuse(where + key, "is missing");
  return *found;
}

std::string ReadText(const Json& json, const std::string& where) {
  if (!json.is_string()) Refuse(where, "must be a text");
  auto bytes = FromUtf8(json.get_ref<const std::string&>());
  if (!bytes) Refuse(where, "holds a character that Windows-1250 lacks");
  return *bytes;
}

std::string ReadText(const Json& json, const char* key, const std::string& where) {
  return ReadText(Member(json, key, where), where + key);
}

NamedTexts ReadTexts(const Json& json, const char* key, const std::string& where) {
  const Json& object = Member(json, key, where);
  if (!object.is_object()) Refuse(where + key, "must be an object of texts");
  NamedTexts items;
  for (const auto& [name, value] : object.items()) {
    const std::string place = where + key + "." + name;
    items.push_back({ReadText(Json(name), place), ReadText(value, place)});
  }
  return items;
}

const Json& ReadList(const Json& json, const char* key, const std::string& where) {
  const Json& list = Member(json, key, where);
  if (!list.is_array()) Refuse(where + key, "must be a list");
  return list;
}

std::vector<std::string> ReadNames(const Json& json, const char* key, const std::string& where) {
  std::vector<std::string> names;
  for (const Json& name : ReadList(json, key, where)) names.push_back(ReadText(name, where + key));
  return names;
}

bool ReadFlag(const Json& json, const char* key, const std::string& where) {
  const Json& flag = Member(json, key, where);
  if (!flag.is_boolean()) Refuse(where + key, "must be true or false");
  return flag.get<bool>();
}

double ReadNumber(const Json& json, const char* key, const std::string& where) {
  const Json& number = Member(json, key, where);
  if (!number.is_number()) Refuse(where + key, "must be a number");
  return number.get<double>();
}

std::vector<double> ReadNumbers(const Json& json, const char* key, const std::string& where) {
  std::vector<double> numbers;
  for (const Json& number : ReadList(json, key, where)) {
    if (!number.is_number()) Refuse(where + key, "must be a list of numbers");
    numbers.push_back(number.get<double>());
  }
  return numbers;
}

Unit ReadUnit(const Json& json) {
  const std::string word = ReadText(json, "unit", "");
  if (word != "mm" && word != "in") Refuse("unit", "must be \"mm\" or \"in\"");
  return word == "in" ? Unit::Inch : Unit::Millimetre;
}

void ReadPartData(const Json& json, const std::string& where, BoardObject& object) {
  object.caption = ReadText(json, "caption", where);
  object.modelPath = ReadText(json, "modelPath", where);
  object.view = ReadText(json, "view", where);
  object.parameters = ReadTexts(json, "parameters", where);
  object.cadParameters = ReadNames(json, "cadParameters", where);
  object.extendedData = ReadTexts(json, "extendedData", where);
  object.featureStates = ReadTexts(json, "featureStates", where);
  const Json& configurations = Member(json, "configurations", where);
  object.configurations.active = ReadText(configurations, "active", where + "configurations.");
  object.configurations.names = ReadNames(configurations, "names", where + "configurations.");
  const auto profile = json.find("profile");
  if (profile == json.end()) return;
  const std::string inside = where + "profile.";
  object.profile =
      Profile{ReadNumbers(*profile, "first", inside), ReadNumbers(*profile, "second", inside),
              ReadNumber(*profile, "baseValue", inside), ReadText(*profile, "baseUnit", inside)};
  if (object.profile->first.size() != object.profile->second.size()) {
    Refuse(inside + "second", "must be as long as \"first\"");
  }
}

Placement ReadPlacement(const Json& json, const std::string& where) {
  Placement placement;
  placement.drawingFile = ReadText(json, "drawingFile", where);
  placement.metric = ReadFlag(json, "metric", where);
  placement.x = ReadNumber(json, "x", where);
  placement.y = ReadNumber(json, "y", where);
  placement.level = ReadNumber(json, "level", where);
  placement.namePrefix = ReadText(json, "namePrefix", where);
  placement.scale = ReadNumber(json, "scale", where);
  return placement;
}

BoardObject ReadObject(const Json& json, const std::string& where) {
  BoardObject object;
  object.name = ReadText(json, "name", where);
  const auto kind = KindFromWord(ReadText(json, "kind", where));
  if (!kind) Refuse(where + "kind", "names no kind of object");
  object.kind = *kind;
  object.protocolId = ReadText(json, "protocolId", where);
  object.formerIds = ReadNames(json, "formerIds", where);
  object.local = ReadFlag(json, "local", where);
  object.filePath = ReadText(json, "filePath", where);
  object.file = ReadText(json, "file", where);
  object.viewOf = ReadText(json, "viewOf", where);
  object.featureOf = ReadText(json, "featureOf", where);
  object.visible = ReadFlag(json, "visible", where);
  object.changes = static_cast<int>(ReadNumber(json, "changes", where));
  ReadPartData(json, where, object);
  if (const auto placement = json.find("placement"); placement != json.end()) {
    object.placement = ReadPlacement(*placement, where + "placement.");
  }
  object.connection = ReadText(json, "connection", where);
  return object;
}

Json ParseText(const std::string& text) {
  Json json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) throw BoardError("The document is not JSON");
  const auto format = json.find(kFormatKey);
  if (format == json.end() || *format != kFormat) {
    throw BoardError("The file is no document of this CAD or one of another format");
  }
  return json;
}

}  // namespace

PartDescription DescribePart(const BoardObject& object, const Document& document) {
  const auto describe = [&](const BoardObject& one) -> PartDescription {
    return {
        one.parameters,    one.profile, one.facets, document.unit, LowerCase(StemOf(one.modelPath)),
        one.featureStates, {}};
  };
  PartDescription part = describe(object);
  for (const BoardObject& other : document.objects) {
    if (other.kind == Kind::Feature && EqualsNoCase(other.featureOf, object.name)) {
      part.features.push_back(describe(other));
    }
  }
  return part;
}

NamedTexts PhysicalPropertyTexts(const MassProperties& mass) {
  const std::array<std::pair<const char*, double>, 12> properties{{
      {"CenterOfMassX", mass.centerX},
      {"CenterOfMassY", mass.centerY},
      {"CenterOfMassZ", mass.centerZ},
      {"Volume", mass.volume},
      {"Area", mass.area},
      {"Mass", mass.mass},
      {"MomXX", mass.momentXX},
      {"MomYY", mass.momentYY},
      {"MomZZ", mass.momentZZ},
      {"MomXY", mass.momentXY},
      {"MomXZ", mass.momentXZ},
      {"MomYZ", mass.momentYZ},
  }};
  NamedTexts texts;
  for (const auto& [name, value] : properties) {
    texts.push_back({name, FormatNumber(value)});
  }
  return texts;
}

std::string DocumentToJson(const Document& document, const Kernel& kernel) {
  Json json;
  json[kFormatKey] = kFormat;
  json["name"] = Text(document.Name());
  json["unit"] = UnitWord(document.unit);
  json["folders"] = {{"assembly", Text(document.folders.assembly)},
                     {"workspace", Text(document.folders.workspace)},
                     {"library", Text(document.folders.library)},
                     {"contentLibrary", Text(document.folders.contentLibrary)}};
  json["objects"] = Json::array();
  for (const BoardObject& object : document.objects) {
    json["objects"].push_back(ObjectToJson(object, document, kernel));
  }
  json["exchangedFiles"] = Json::array();
  for (const ExchangedFile& file : document.exchangedFiles) {
    json["exchangedFiles"].push_back(
        {{"path", Text(file.path)}, {"kind", file.kind}, {"contents", Text(file.contents)}});
  }
  return json.dump(2) + "\n";
}

Document DocumentFromJson(const std::string& text) {
  const Json json = ParseText(text);
  Document document;
  document.unit = ReadUnit(json);
  const Json& folders = Member(json, "folders", "");
  document.folders.assembly = ReadText(folders, "assembly", "folders.");
  document.folders.workspace = ReadText(folders, "workspace", "folders.");
  document.folders.library = ReadText(folders, "library", "folders.");
  document.folders.contentLibrary = ReadText(folders, "contentLibrary", "folders.");
  const Json& objects = ReadList(json, "objects", "");
  for (std::size_t i = 0; i < objects.size(); ++i) {
    document.objects.push_back(ReadObject(objects[i], "objects[" + std::to_string(i) + "]."));
  }
  for (const Json& file : ReadList(json, "exchangedFiles", "")) {
    document.exchangedFiles.push_back(
        {ReadText(file, "path", "exchangedFiles."),
         static_cast<int>(ReadNumber(file, "kind", "exchangedFiles.")),
         ReadText(file, "contents", "exchangedFiles.")});
  }
  return document;
}

std::string PartToJson(const BoardObject& object, const Document& document, const Kernel& kernel) {
  Json json;
  json[kPartFormatKey] = kFormat;
  json["document"] = Text(document.Name());
  json["name"] = Text(object.name);
  json["kind"] = KindWord(object.kind);
  json["protocolId"] = Text(object.protocolId);
  json["unit"] = UnitWord(document.unit);
  PutPartData(json, object);
  PutComputed(json, object, document, kernel);
  return json.dump(2) + "\n";
}

bool IsPartText(const std::string& text) {
  return text.starts_with(std::string("{\n  \"") + kPartFormatKey + '"');
}

bool SamePart(const BoardObject& left, const BoardObject& right) {
  return left.kind == right.kind && left.caption == right.caption &&
         left.modelPath == right.modelPath && left.parameters == right.parameters &&
         left.extendedData == right.extendedData && left.profile == right.profile &&
         left.facets == right.facets;
}

}  // namespace drawboard
