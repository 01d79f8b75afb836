// An assembly that carries a protocol.
#pragma once

#include "parts/VXParamPart.h"

namespace quillmar {

class VXAssembly : public VXParamPart {
 public:
  using VXParamPart::VXParamPart;

  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool WantsDescription() override;
};

}  // namespace quillmar
