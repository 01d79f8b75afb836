#include "session/BillOfMaterials.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/System.h"
#include "session/Units.h"

namespace session {
namespace {

constexpr const char* kBodyMass = "Body mass";
constexpr const char* kProperties = "physicalProperties";

// Calculations whose one part is needed several times, and the parameter that says how often.
struct Counted {
  const char* dataFile;
  const char* parameter;
};
constexpr Counted kCounted[] = {{"KEELDATA|THRJOIN", "N"}};

std::vector<std::vector<std::string>> Table(const BillOfMaterials& bill) {
  std::vector<std::vector<std::string>> table(1, {"Pos", "Qty"});
  table[0].insert(table[0].end(), bill.columns.begin(), bill.columns.end());
  for (const auto& row : bill.rows) {
    auto& cells = table.emplace_back();
    cells = {std::to_string(table.size() - 1), std::to_string(row.quantity)};
    cells.insert(cells.end(), row.values.begin(), row.values.end());
  }
  return table;
}

std::string CsvCell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"') quoted += '"';
    quoted += character;
  }
  return quoted + "\"";
}

// A drawing shows a part that stands in the model anyway, and the assembly is what the bill is for.
bool CountsAsPart(const DocumentJson& object) {
  return !object["extendedData"].empty() && object["viewOf"] == "" &&
         !object.contains("placement") && object.value("kind", std::string()) != "assembly";
}

double NumberIn(const DocumentJson& object, const char* group, const char* name) {
  const auto found = object.find(group);
  if (found == object.end()) return 0;
  return std::strtod(found->value(name, std::string()).c_str(), nullptr);
}

int QuantityOf(const DocumentJson& object) {
  const auto main = KeywordsOfReference(object.value("connection", std::string()), "Main");
  const auto dataFile = main.find("DataFile");
  for (const Counted& each : kCounted) {
    if (dataFile == main.end() ||
        !quillmar::platform::EqualsNoCase(dataFile->second, each.dataFile)) {
      continue;
    }
    return std::max(1,
                    static_cast<int>(std::lround(NumberIn(object, "parameters", each.parameter))));
  }
  return 1;
}

bool IsViewOf(const DocumentJson& view, const DocumentJson& object) {
  const std::string id = view.value("viewOf", std::string());
  if (id.empty()) return false;
  const auto former = object.value("formerIds", std::vector<std::string>());
  return id == object.value("protocolId", std::string()) ||
         std::find(former.begin(), former.end(), id) != former.end();
}

// What the CAD weighs: the part with its views. Empty when it has no body.
std::string BodyMassOf(const DocumentJson& document, const DocumentJson& object) {
  if (!object.contains(kProperties)) return {};
  double mass = NumberIn(object, kProperties, "Mass");
  for (const DocumentJson& other : document["objects"]) {
    if (IsViewOf(other, object)) mass += NumberIn(other, kProperties, "Mass");
  }
  return fmt::format("{:.6g} {}", mass, MassUnitOf(document));
}

}  // namespace

BillOfMaterials MakeBillOfMaterials(const DocumentJson& document) {
  BillOfMaterials bill;
  for (const DocumentJson& object : document["objects"]) {
    if (!CountsAsPart(object)) continue;
    for (const auto& [name, value] : object["extendedData"].items()) {
      if (std::find(bill.columns.begin(), bill.columns.end(), name) == bill.columns.end()) {
        bill.columns.push_back(name);
      }
    }
  }
  const std::size_t tags = bill.columns.size();
  const bool weighed = std::any_of(document["objects"].begin(), document["objects"].end(),
                                   [](const DocumentJson& object) {
                                     return CountsAsPart(object) && object.contains(kProperties);
                                   });
  if (weighed) bill.columns.push_back(kBodyMass);
  for (const DocumentJson& object : document["objects"]) {
    if (!CountsAsPart(object)) continue;
    std::vector<std::string> values;
    for (std::size_t i = 0; i < tags; ++i) {
      values.push_back(object["extendedData"].value(bill.columns[i], std::string()));
    }
    if (weighed) values.push_back(BodyMassOf(document, object));
    const int quantity = QuantityOf(object);
    const auto equal = std::find_if(bill.rows.begin(), bill.rows.end(),
                                    [&](const auto& row) { return row.values == values; });
    if (equal != bill.rows.end()) {
      equal->quantity += quantity;
    } else {
      bill.rows.push_back({quantity, std::move(values)});
    }
  }
  return bill;
}

std::string BillText(const BillOfMaterials& bill) {
  const auto table = Table(bill);
  std::vector<std::size_t> widths(table[0].size(), 0);
  for (const auto& row : table) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], WidthOf(row[i]));
  }
  std::string text;
  for (const auto& row : table) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) line += Padded(row[i], widths[i] + 3);
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

std::string BillCsv(const BillOfMaterials& bill) {
  std::string text;
  for (const auto& row : Table(bill)) {
    for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "," : "") + CsvCell(row[i]);
    text += "\r\n";
  }
  return text;
}

}  // namespace session
