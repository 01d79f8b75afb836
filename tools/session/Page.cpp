#include "session/Page.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"
#include "platform/System.h"
#include "session/Addin.h"
#include "session/BillOfMaterials.h"
#include "session/DrawingPicture.h"
#include "session/Failures.h"
#include "session/Model.h"
#include "session/ModelPicture.h"
#include "session/Notes.h"
#include "session/Units.h"

namespace session {
namespace {

using Json = DocumentJson;
using drawboard::FromUtf8;
using drawboard::ReadWholeFile;
using drawboard::ToUtf8;
using quillmar::recorder::TracedCall;

std::string Base64(std::string_view bytes) {
  constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      const bool filled = i + k <= bytes.size();
      text += filled ? kLetters[group >> (18 - 6 * k) & 63] : '=';
    }
  }
  return text;
}

bool HasExtension(const std::string& path, const std::string& extension) {
  const std::string lower = quillmar::platform::LowerCase(path);
  return lower.size() > extension.size() && lower.ends_with(extension);
}

// Files that the page carries, each once. They are text blocks of their own, which a browser
// neither shows nor decodes before somebody looks at one.
class Attachments {
 public:
  // Its number in the page; null when there is no such file.
  Json Add(const std::string& path) {
    const auto known = numbers.find(path);
    return known != numbers.end() ? known->second : numbers[path] = Keep(ReadWholeFile(path));
  }
  Json AddDrawing(const std::string& path) {
    return Keep(Made(path, HasExtension(path, ".wmf") ? SvgOfMetafile : SvgOfDxf));
  }
  // A body in a model file: its picture, and what can be turned.
  Json AddModelPicture(const std::string& path) { return Keep(Made(path, SvgOfFacets)); }
  Json AddModel(const std::string& path) { return Keep(Made(path, GlbOfFacets)); }
  const std::string& Blocks() const { return blocks; }

 private:
  using Maker = std::optional<std::string> (*)(const std::string& contents);
  static std::optional<std::string> Made(const std::string& path, Maker make) {
    const auto contents = ReadWholeFile(path);
    return contents ? make(*contents) : std::nullopt;
  }
  Json Keep(const std::optional<std::string>& contents) {
    if (!contents) return nullptr;
    blocks += fmt::format("<script type=\"text/plain\" id=\"file-{}\">{}</script>\n", count,
                          Base64(*contents));
    return count++;
  }

  std::map<std::string, Json> numbers;
  std::string blocks;
  int count = 0;
};

std::string Text(const Json& object, const char* key) { return object.value(key, std::string()); }

// A file's path with another extension, as the CAD names what belongs to a part file.
std::string Beside(const std::string& path, const char* extension) {
  const auto dot = path.find_last_of(".\\");
  const bool has = dot != std::string::npos && path[dot] == '.';
  return (has ? path.substr(0, dot) : path) + extension;
}

std::string Bytes(const std::string& utf8) { return FromUtf8(utf8).value_or(std::string()); }

// --- parameters ---

Json Value(const std::string& name, const std::string& value, const std::string& unit,
           const std::string& meaning, const std::string& formula) {
  return {
      {"name", name}, {"value", value}, {"unit", unit}, {"meaning", meaning}, {"formula", formula}};
}

// What the CAD added comes from no calculation.
void PutParameters(Json& shown, const Json& object, const std::string& reference) {
  const Notes notes(reference);
  const Json added = object.value("cadParameters", Json::array());
  const auto groupOf = [&](const std::string& name) {
    if (std::find(added.begin(), added.end(), name) != added.end()) return "added";
    if (notes.IsForeign(name)) return "foreign";
    return notes.Formula(name).empty() ? "inputs" : "results";
  };
  for (const char* group : {"inputs", "results", "added", "foreign"}) shown[group] = Json::array();
  for (const auto& [name, value] : ParametersOf(object)) {
    shown[groupOf(name)].push_back(
        Value(name, value, notes.Unit(name), notes.Meaning(name), notes.Formula(name)));
  }
}

void PutBody(Json& shown, const Json& document, const Json& object) {
  const std::string unit = Text(document, "unit");
  const std::string massUnit = MassUnitOf(document);
  const struct {
    const char* key;
    const char* meaning;
    std::string unit;
  } kinds[] = {
      {"Mass", "mass", massUnit},
      {"Volume", "volume", unit + "³"},
      {"Area", "surface", unit + "²"},
      {"CenterOfMassX", "centre of mass, x", unit},
      {"CenterOfMassY", "centre of mass, y", unit},
      {"CenterOfMassZ", "centre of mass, z", unit},
      {"MomXX", "moment of inertia about x", massUnit + " " + unit + "²"},
      {"MomYY", "moment of inertia about y", massUnit + " " + unit + "²"},
      {"MomZZ", "moment of inertia about z", massUnit + " " + unit + "²"},
  };
  shown["body"] = Json::array();
  const Json properties = object.value("physicalProperties", Json::object());
  for (const auto& kind : kinds) {
    if (!properties.contains(kind.key)) continue;
    shown["body"].push_back(
        Value(kind.key, Text(properties, kind.key), kind.unit, kind.meaning, ""));
  }
  const Json measured = object.value("measured", Json::object());
  for (const auto& [name, value] : measured.items()) {
    shown["body"].push_back(
        Value(name, value.get<std::string>(), unit, "measured on the body", ""));
  }
}

// --- model ---

Json ObjectJson(const DocumentJson& document, const Json& object, Attachments& files) {
  const std::string reference = Text(object, "connection");
  const auto calculation = KeywordsOfReference(Bytes(reference), "Calc");
  const auto calculationName = calculation.find("CalcName");
  Json shown;
  for (const char* key : {"name", "kind", "caption", "file", "filePath", "modelPath", "featureOf",
                          "protocolId", "view"}) {
    shown[key] = Text(object, key);
  }
  shown["calculation"] =
      calculationName != calculation.end() ? ToUtf8(calculationName->second) : std::string();
  const std::string viewed = Text(object, "viewOf");
  const auto main =
      viewed.empty() ? std::vector<std::string>() : ObjectsOfProtocol(document, viewed);
  shown["viewOf"] = main.empty() ? viewed : main.front();
  shown["changes"] = object.value("changes", 0);
  shown["bom"] = object.value("extendedData", Json::object());
  shown["states"] = object.value("featureStates", Json::object());
  PutBody(shown, document, object);
  PutParameters(shown, object, reference);
  const std::string file = Bytes(shown["file"].get<std::string>());
  shown["picture"] = file.empty() ? Json() : files.Add(Beside(file, ".svg"));
  shown["solid"] = file.empty() ? Json() : files.Add(Beside(file, ".glb"));
  if (const std::string model = Bytes(shown["modelPath"].get<std::string>());
      HasExtension(model, ".c3d")) {
    shown["picture"] = files.AddModelPicture(model);
    shown["solid"] = files.AddModel(model);
  }
  if (const auto placement = object.find("placement"); placement != object.end()) {
    shown["drawingFile"] = Text(*placement, "drawingFile");
    shown["picture"] = files.AddDrawing(Bytes(Text(*placement, "drawingFile")));
  }
  return shown;
}

Json BillJson(const DocumentJson& document) {
  const BillOfMaterials bill = MakeBillOfMaterials(document);
  Json rows = Json::array();
  for (const auto& row : bill.rows) {
    rows.push_back({{"quantity", row.quantity}, {"values", row.values}});
  }
  return {{"columns", bill.columns}, {"rows", std::move(rows)}};
}

// --- steps and calls ---

Json StepsJson(const SessionData& data, Attachments& files) {
  Json steps = Json::array();
  for (const StepRecord& step : data.steps) {
    Json inputs = Json::array();
    Json pictures = Json::array();
    for (const std::string& file : step.files) {
      const Json picture = files.AddDrawing(Beside(Bytes(file), ".dxf"));
      if (!picture.is_null()) pictures.push_back(picture);
    }
    for (const auto& [name, value] : step.inputs) inputs.push_back({name, value});
    steps.push_back({{"kind", step.kind},
                     {"name", step.name},
                     {"title", step.title},
                     {"inputs", std::move(inputs)},
                     {"objects", step.objects},
                     {"pictures", std::move(pictures)},
                     {"results", step.results},
                     {"failure", step.failure},
                     {"begin", step.begin},
                     {"end", step.end}});
  }
  return steps;
}

// Each name once; calls name them by number. A long session has tens of thousands of calls.
Json CallsJson(const std::vector<TracedCall>& calls) {
  std::map<std::string, int> numbers;
  Json names = Json::array();
  const auto number = [&](const std::string& name) {
    const auto [known, added] = numbers.emplace(name, static_cast<int>(numbers.size()));
    if (added) names.push_back(name);
    return known->second;
  };
  const std::vector<bool> failed = FailedCalls(calls);
  Json rows = Json::array();
  for (std::size_t i = 0; i < calls.size(); ++i) {
    const TracedCall& call = calls[i];
    std::string arguments;
    for (const std::string& each : call.arguments) {
      arguments += (arguments.empty() ? "" : ", ") + each;
    }
    rows.push_back({call.microseconds, call.duration, number(call.from), number(call.to),
                    number(call.function), arguments, call.result, failed[i] ? 1 : 0});
  }
  return {{"names", std::move(names)}, {"rows", std::move(rows)}};
}

// --- the page ---

Json PageJson(const SessionData& data, const PageSource& source, Attachments& files) {
  Json page;
  page["job"] = data.job;
  page["steps"] = StepsJson(data, files);
  page["calls"] = CallsJson(data.calls);
  page["objects"] = Json::array();
  page["bill"] = {{"columns", Json::array()}, {"rows", Json::array()}};
  if (data.document.empty()) return page;
  const auto document = DocumentJson::parse(data.document);
  page["document"] = Text(document, "name");
  page["unit"] = Text(document, "unit");
  page["bill"] = BillJson(document);
  page["assembly"] = files.Add(source.documents + "\\" + Bytes(Text(document, "name")) + ".glb");
  for (const Json& object : document["objects"]) {
    page["objects"].push_back(ObjectJson(document, object, files));
  }
  return page;
}

// JSON that may stand in a script element whatever texts it holds.
std::string ScriptText(const Json& json) {
  std::string text;
  for (const char c : json.dump(-1, ' ', false, Json::error_handler_t::replace)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

std::string ReadTemplateFile(const PageSource& source, const std::string& name) {
  auto text = ReadWholeFile(source.folder + "\\" + name);
  if (!text)
    throw SessionError("The page's template lacks the file " + source.folder + "\\" + name);
  return std::move(*text);
}

}  // namespace

// "@@name@@" in the template stands for the data or for a file beside it; what is put there is not
// looked through again.
std::string PageText(const SessionData& data, const PageSource& source) {
  constexpr std::string_view kMark = "@@";
  Attachments files;
  const std::string json = ScriptText(PageJson(data, source, files));
  const std::string page = ReadTemplateFile(source, "page.html");
  std::string text;
  std::size_t place = 0;
  for (;;) {
    const auto begin = page.find(kMark, place);
    const auto end = page.find(kMark, begin + kMark.size());
    if (begin == std::string::npos || end == std::string::npos) break;
    text += page.substr(place, begin - place);
    const std::string name = page.substr(begin + kMark.size(), end - begin - kMark.size());
    text += name == "data"    ? json
            : name == "files" ? files.Blocks()
                              : ReadTemplateFile(source, name);
    place = end + kMark.size();
  }
  return text + page.substr(place);
}

}  // namespace session
