// Files that the host writes for the CAD. Their extension says what they are: ".wmf" a picture,
// ".c3d" and ".c3p" a model as a faceted body, any other a DXF drawing.
#pragma once

#include <string>
#include <vector>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

// Draws a calculated part from its parameters: a gear seen along its axis (tip, reference, root
// circle and bore), a shaft from the side, a sheet format. False when the kind is not drawn or the
// file cannot be written.
bool WriteDrawing(const std::string& path, const std::string& dataFileType,
                  const std::vector<DataParameter>& parameters);

}  // namespace hexaplan
