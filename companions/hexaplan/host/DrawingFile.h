// Drawings that the host writes for the CAD: a DXF file of lines, circles and text that any CAD
// reads (AutoCAD release 12 entities).
#pragma once

#include <string>
#include <vector>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

// Draws a calculated part from its parameters: a gear seen along its axis (tip, reference, root
// circle and bore), a shaft from the side. False when the kind is not drawn or the file cannot be
// written.
bool WriteDrawing(const std::string& path, const std::string& dataFileType,
                  const std::vector<DataParameter>& parameters);

}  // namespace hexaplan
