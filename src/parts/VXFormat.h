// A sheet format of a drawing.
#pragma once

#include "parts/VXSymbol.h"

namespace quillmar {

class VXFormat : public VXSymbol {
 public:
  using VXSymbol::VXSymbol;

  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;

 private:
  double scale = 0.0;
};

}  // namespace quillmar
