// The converter of most calculations: a step between the layouts clears and renames data
// parameters by a table.
#pragma once

#include "conversion/LayoutConverter.h"

namespace quillmar {

class ParameterConverter : public LayoutConverter {
 public:
  ParameterConverter(ConverterKind kind, VXProtocol& protocol, const ProtocolConverter& controller,
                     Protocols& newProtocols);

  int Convert(int fromMajor, int toMajor, int fromMinor, int toMinor) override;

 protected:
  // Does what the kind does between minor versions of the current layout; true when it did
  // something.
  virtual bool ConvertMinor(int fromMinor, int toMinor);

 private:
  // A write that fails ends the step: the version stays, and the step can be done again.
  bool ConvertMajor(int fromMajor, int toMajor, int toMinor);

  ConverterKind kind;
};

}  // namespace quillmar
