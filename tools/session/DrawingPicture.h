// Pictures of drawings: DXF text as SVG.
#pragma once

#include <optional>
#include <string>

namespace session {

// The lines, circles, arcs and polylines of a DXF file; other entities are passed over. Layers
// whose name begins with "CENTRE" are chain lines. Nothing when there is nothing to draw.
std::optional<std::string> SvgOfDxf(const std::string& dxf);

}  // namespace session
