// The bill of materials of a document, from the extended data of its parts: equal parts are one row
// with a quantity; views of a calculation and drawings are no parts of their own. A bolted joint
// counts as many times as it has bolts. The extended data hold what the calculation found; a last
// column says what the CAD weighs, for one piece with its views.
#pragma once

#include <string>
#include <vector>

#include "session/Model.h"

namespace session {

struct BillOfMaterials {
  // Of extended data, in the order of their first use, and "Body mass" when the CAD weighs any.
  std::vector<std::string> columns;
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
