// A shaft, built by the CAD's own shaft function.
#pragma once

#include "parts/VXParamPart.h"

namespace quillmar {

class VXShaft : public VXParamPart {
 public:
  using VXParamPart::VXParamPart;

  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ReadBackFromCad() override;
  bool WantsDescription() override;
};

}  // namespace quillmar
