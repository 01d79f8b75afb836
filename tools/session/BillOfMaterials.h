// The bill of materials of a document, from the extended data of its parts: equal parts are one row
// with a quantity; views of a calculation and drawings are no parts of their own.
#pragma once

#include <string>
#include <vector>

#include "session/Model.h"

namespace session {

struct BillOfMaterials {
  std::vector<std::string> columns;  // of extended data, in the order of their first use
  struct Row {
    int quantity = 0;
    std::vector<std::string> values;  // one for each column
  };
  std::vector<Row> rows;
};

BillOfMaterials MakeBillOfMaterials(const DocumentJson& document);

// As a table for people, and as comma-separated values (both UTF-8).
std::string BillText(const BillOfMaterials& bill);
std::string BillCsv(const BillOfMaterials& bill);

}  // namespace session
