// The outlines of calculated parts, from their parameters.
#pragma once

#include <map>
#include <string>

#include "hexaplan/calculation/Fields.h"
#include "hexaplan/host/Shapes.h"

namespace hexaplan {

// Parameters that are numbers.
class Values {
 public:
  explicit Values(const std::vector<DataParameter>& parameters);
  bool Has(const std::string& name) const { return values.count(name) != 0; }
  // 0 for one that is missing.
  double Of(const std::string& name) const;
  // Of a row "<name>_<number>"; a null name is missing.
  double Of(const char* name, int number) const;

 private:
  std::map<std::string, double, NameLess> values;
};

// How a part is drawn; lengths are in the unit of its parameters.
struct DrawingStyle {
  double axisOverlap = 0;  // of centre lines beyond the outline, 0: a twentieth of the part
};

// Each is empty when the parameters are none of such a part.
//
// A gear along its axis: its teeth when they are known, else its circles. A sleeve has no teeth.
Shapes DrawGear(const Values& values, const DrawingStyle& style);
// A shaft from the side, keyways and cross holes towards the viewer.
Shapes DrawShaft(const Values& values, const DrawingStyle& style);
// A disc cam along its axis, with its base circle.
Shapes DrawCam(const Values& values, const DrawingStyle& style);
// The bolt of a joint from the side; its nut or washer along the axis.
Shapes DrawFastener(const Values& values, const DrawingStyle& style);
// A parallel key, or its keyway, from above.
Shapes DrawKey(const Values& values, const DrawingStyle& style);

}  // namespace hexaplan
