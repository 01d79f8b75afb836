// Shafts. Their two layouts differ in structure, not in names alone: the whole of one is read into
// memory before anything of the other is written.
#pragma once

#include "conversion/LayoutConverter.h"

namespace quillmar {

class ShaftConverter : public LayoutConverter {
 public:
  using LayoutConverter::LayoutConverter;

  // Without a step between the layouts the version is still written. Damaged counts or a write that
  // fails end the conversion: the version stays, and the conversion can be done again.
  int Convert(int fromMajor, int toMajor, int fromMinor, int toMinor) override;

 private:
  bool ConvertUp();
  bool ConvertDown();
};

}  // namespace quillmar
