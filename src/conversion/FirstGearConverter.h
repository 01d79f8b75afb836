// Spur gears of the first kind: beside the parameters, minor versions of the current layout rename
// the view key between two families of models.
#pragma once

#include "conversion/ParameterConverter.h"

namespace quillmar {

class FirstGearConverter : public ParameterConverter {
 public:
  using ParameterConverter::ParameterConverter;

 protected:
  // The stored version stays as it is.
  bool ConvertMinor(int fromMinor, int toMinor) override;
};

}  // namespace quillmar
