// Files that the host writes for the CAD. Their extension says what they are: ".wmf" a picture,
// ".c3d" and ".c3p" a model as a faceted body, any other a DXF drawing.
#pragma once

#include <string>
#include <vector>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

// What the CAD side asks of its drawings.
struct DrawingSettings {
  double axisOverlap = 0;  // of centre lines, in the drawing's unit; 0: in proportion to the part
  std::string layersFile;  // "Layers.ini"; empty: none
};

// Draws a calculated part from its parameters, as outlines. False when the kind is not drawn or the
// file cannot be written.
bool WriteDrawing(const std::string& path, const std::string& dataFileType,
                  const std::vector<DataParameter>& parameters,
                  const DrawingSettings& settings = {});

}  // namespace hexaplan
