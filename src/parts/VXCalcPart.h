// A calculation that stands in the CAD as an object without geometry and carries its protocol.
#pragma once

#include "parts/VXPart.h"

namespace quillmar {

class VXCalcPart : public VXPart {
 public:
  using VXPart::VXPart;

  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool WantsDescription() override;

 private:
  std::string CalculationCaption();
  bool ChangeFully(const std::string& connection, const std::string& title);
};

}  // namespace quillmar
