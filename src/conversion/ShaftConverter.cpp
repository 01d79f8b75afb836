#include "conversion/ShaftConverter.h"

namespace quillmar {

int ShaftConverter::Convert(int fromMajor, int toMajor, int, int toMinor) {
  const bool betweenLayouts = (fromMajor == kOldMajor && toMajor == kCurrentMajor) ||
                              (fromMajor == kCurrentMajor && toMajor == kOldMajor);
  if (betweenLayouts) {
    protocol.Context().errors.ReportError("Cannot convert shaft protocol", QM_HERE);
    return 1;
  }
  protocol.SetVersion(toMajor, toMinor);
  return 1;
}

}  // namespace quillmar
