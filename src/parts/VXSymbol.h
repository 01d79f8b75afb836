// A drawing symbol.
#pragma once

#include "parts/VX2dPart.h"

namespace quillmar {

class VXSymbol : public VX2dPart {
 public:
  using VX2dPart::VX2dPart;

  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;

 protected:
  std::string namePrefix;  // begins the names of the symbol's blocks
};

}  // namespace quillmar
