#include "session/Model.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "drawboard/CodePage.h"
#include "session/Units.h"

namespace session {
namespace {

constexpr std::size_t kColumnGap = 3;
constexpr int kLongestRow = 24;

const DocumentJson* FindObject(const DocumentJson& document, const std::string& name) {
  for (const DocumentJson& object : document["objects"]) {
    if (object["name"] == name) return &object;
  }
  return nullptr;
}

std::string Text(const DocumentJson& object, const char* key) {
  return object[key].get<std::string>();
}

std::string TextOf(const DocumentJson& document, const std::string& objectName, const char* key) {
  const DocumentJson* object = FindObject(document, objectName);
  return object != nullptr ? Text(*object, key) : std::string();
}

// "<row>_" of a numbered parameter "<row>_<number>", empty for others.
std::string RowOf(const std::string& name) {
  const auto end = name.find_last_not_of("0123456789");
  const bool numbered = end != std::string::npos && end + 1 < name.size() && name[end] == '_';
  return numbered ? name.substr(0, end + 1) : std::string();
}

// Of a long row, such as the points of a cam's profile, only the number of values is shown.
std::vector<std::string> ParameterCells(const DocumentJson& object) {
  const auto units = UnitsOfReference(Text(object, "connection"));
  std::map<std::string, int> rows;
  for (const auto& parameter : object["parameters"].items()) ++rows[RowOf(parameter.key())];
  std::vector<std::string> cells;
  for (const auto& [name, value] : object["parameters"].items()) {
    const std::string row = RowOf(name);
    if (const int count = row.empty() ? 0 : rows[row]; count > kLongestRow) {
      if (name == row + "1") cells.push_back(fmt::format("{}1 ... {}{}", row, row, count));
      continue;
    }
    const auto unit = units.find(name);
    const bool known = unit != units.end() && !unit->second.empty();
    cells.push_back(fmt::format("{} = {}{}{}", name, value.get<std::string>(), known ? " " : "",
                                known ? unit->second : ""));
  }
  return cells;
}

// Cells in columns of equal width, read from left to right.
std::string Columns(const std::vector<std::string>& cells, const std::string& indent,
                    std::size_t width) {
  std::size_t widest = 1;
  for (const std::string& cell : cells) widest = std::max(widest, WidthOf(cell));
  const std::size_t room = width > WidthOf(indent) ? width - WidthOf(indent) : 1;
  const std::size_t columns = std::max<std::size_t>(1, (room + kColumnGap) / (widest + kColumnGap));
  std::string text;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i % columns == 0) text += indent;
    const bool last = i % columns == columns - 1 || i + 1 == cells.size();
    text += last ? cells[i] + "\n" : Padded(cells[i], widest + kColumnGap);
  }
  return text;
}

std::string PropertyLine(const DocumentJson& document, const DocumentJson& object) {
  const std::string unit = Text(document, "unit");
  const auto found = object.find("physicalProperties");
  if (found == object.end()) return {};
  const auto value = [&](const char* name) { return (*found)[name].get<std::string>(); };
  return fmt::format("mass {} {}, volume {} {}³, area {} {}², centre of mass x = {} {}",
                     value("Mass"), MassUnitOf(document), value("Volume"), unit, value("Area"),
                     unit, value("CenterOfMassX"), unit);
}

// Name of the object whose view this one is.
std::string ViewedObject(const DocumentJson& document, const DocumentJson& object) {
  const std::string id = Text(object, "viewOf");
  const auto names = id.empty() ? std::vector<std::string>() : ObjectsOfProtocol(document, id);
  return names.empty() ? id : names.front();
}

std::string ObjectText(const DocumentJson& document, const DocumentJson& object,
                       const Origins& origins, bool last, std::size_t width) {
  const std::string indent = last ? "     " : "│    ";
  std::string text =
      fmt::format("{}{}  ({})\n", last ? "└─ " : "├─ ", Text(object, "name"), Text(object, "kind"));
  const auto line = [&](const char* title, const std::string& value) {
    if (!value.empty()) text += fmt::format("{}{:<11}{}\n", indent, title, value);
  };
  line("caption", Text(object, "caption"));
  if (const auto steps = origins.find(Text(object, "name")); steps != origins.end()) {
    for (const std::string& step : steps->second) line("came by", step);
  }
  line("file", Text(object, "file"));
  line("given as", Text(object, "filePath"));
  line("model", Text(object, "modelPath"));
  line("view of", ViewedObject(document, object));
  line("feature of", Text(object, "featureOf"));
  if (const auto sheet = object.find("placement"); sheet != object.end() && sheet->is_object()) {
    line("drawing", sheet->value("drawingFile", std::string()));
  }
  line("protocol", Text(object, "protocolId"));
  line("changes", std::to_string(object["changes"].get<int>()));
  line("body", PropertyLine(document, object));
  text += Columns(ParameterCells(object), indent + "  ", width);
  return text;
}

}  // namespace

std::vector<std::string> ObjectsOfProtocol(const DocumentJson& document,
                                           const std::string& protocolId) {
  std::vector<std::string> names;
  for (const DocumentJson& object : document["objects"]) {
    const DocumentJson& former = object["formerIds"];
    if (object["protocolId"] == protocolId ||
        std::find(former.begin(), former.end(), protocolId) != former.end()) {
      names.push_back(Text(object, "name"));
    }
  }
  return names;
}

std::vector<std::string> ViewsOfProtocol(const DocumentJson& document,
                                         const std::string& protocolId) {
  std::vector<std::string> names;
  for (const DocumentJson& object : document["objects"]) {
    if (object["viewOf"] == protocolId) names.push_back(Text(object, "name"));
  }
  return names;
}

int ChangesOf(const DocumentJson& document, const std::string& objectName) {
  const DocumentJson* object = FindObject(document, objectName);
  return object != nullptr ? (*object)["changes"].get<int>() : -1;
}

std::string ProtocolOf(const DocumentJson& document, const std::string& objectName) {
  return TextOf(document, objectName, "protocolId");
}

std::string KindOf(const DocumentJson& document, const std::string& objectName) {
  return TextOf(document, objectName, "kind");
}

std::string ConnectionOf(const DocumentJson& document, const std::string& objectName) {
  return TextOf(document, objectName, "connection");
}

const char* MassUnitOf(const DocumentJson& document) {
  return Text(document, "unit") == "in" ? "lb" : "kg";
}

std::optional<std::string> ObjectOfKind(const DocumentJson& document, const std::string& kind) {
  for (const DocumentJson& object : document["objects"]) {
    if (object["kind"] == kind) return Text(object, "name");
  }
  return std::nullopt;
}

std::vector<std::pair<std::string, std::string>> ParametersOf(const DocumentJson& object) {
  std::vector<std::pair<std::string, std::string>> parameters;
  if (const auto found = object.find("parameters"); found != object.end()) {
    for (const auto& [name, value] : found->items()) {
      parameters.emplace_back(name, value.get<std::string>());
    }
  }
  if (!parameters.empty()) return parameters;
  const auto reference = drawboard::FromUtf8(Text(object, "connection"));
  for (const auto& [name, value] : ValuesOfReference(reference.value_or(std::string()))) {
    parameters.emplace_back(drawboard::ToUtf8(name), drawboard::ToUtf8(value));
  }
  return parameters;
}

std::vector<std::pair<std::string, std::string>> ParametersOf(const DocumentJson& document,
                                                              const std::string& objectName) {
  const DocumentJson* object = FindObject(document, objectName);
  if (object == nullptr) return {};
  return ParametersOf(*object);
}

std::optional<std::string> ParameterOf(const DocumentJson& document,
                                       const std::vector<std::string>& objectNames,
                                       const std::string& parameter) {
  for (const std::string& name : objectNames) {
    const DocumentJson* object = FindObject(document, name);
    if (object == nullptr) continue;
    const DocumentJson& own = (*object)["parameters"];
    if (const auto found = own.find(parameter); found != own.end())
      return found->get<std::string>();
    if (!own.empty()) continue;
    for (auto& [each, value] : ParametersOf(*object)) {
      if (each == parameter) return std::move(value);
    }
  }
  return std::nullopt;
}

bool BelongsToLongRow(const DocumentJson& object, const std::string& parameter) {
  const std::string row = RowOf(parameter);
  if (row.empty()) return false;
  int count = 0;
  for (const auto& each : object["parameters"].items()) count += RowOf(each.key()) == row ? 1 : 0;
  return count > kLongestRow;
}

std::string ModelText(const DocumentJson& document, const Origins& origins, std::size_t width) {
  const DocumentJson& objects = document["objects"];
  std::string text = fmt::format("{}  (assembly, {}; {} objects)\n", Text(document, "name"),
                                 Text(document, "unit"), objects.size());
  for (std::size_t i = 0; i < objects.size(); ++i) {
    text += ObjectText(document, objects[i], origins, i + 1 == objects.size(), width);
  }
  return text;
}

std::size_t WidthOf(const std::string& utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::string Padded(const std::string& utf8, std::size_t width) {
  return utf8 + std::string(width - std::min(width, WidthOf(utf8)), ' ');
}

}  // namespace session
