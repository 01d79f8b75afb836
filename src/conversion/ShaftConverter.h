// Shafts. Their two layouts differ in structure, not in names alone. A step between the layouts is
// refused and reported: the protocol stays whole, in the layout and with the version it has.
#pragma once

#include "conversion/LayoutConverter.h"

namespace quillmar {

class ShaftConverter : public LayoutConverter {
 public:
  using LayoutConverter::LayoutConverter;

  // Without a step between the layouts the version is still written.
  int Convert(int fromMajor, int toMajor, int fromMinor, int toMinor) override;
};

}  // namespace quillmar
