#include "session/BillOfMaterials.h"

#include <algorithm>

namespace session {
namespace {

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

// A drawing shows a part that stands in the model anyway.
bool CountsAsPart(const DocumentJson& object) {
  return !object["extendedData"].empty() && object["viewOf"] == "" && !object.contains("placement");
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
  for (const DocumentJson& object : document["objects"]) {
    if (!CountsAsPart(object)) continue;
    std::vector<std::string> values;
    for (const std::string& column : bill.columns) {
      values.push_back(object["extendedData"].value(column, std::string()));
    }
    const auto equal = std::find_if(bill.rows.begin(), bill.rows.end(),
                                    [&](const auto& row) { return row.values == values; });
    if (equal != bill.rows.end()) {
      ++equal->quantity;
    } else {
      bill.rows.push_back({1, std::move(values)});
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
