// Pictures of what other programs drew, as SVG.
#pragma once

#include <optional>
#include <string>

namespace session {

// The lines, circles, arcs and polylines of a DXF file; other entities are passed over. Layers
// whose name begins with "CENTRE" are chain lines. Nothing when there is nothing to draw.
std::optional<std::string> SvgOfDxf(const std::string& dxf);

// The lines and ellipses of a Windows metafile, as the calculation host draws pictures; other
// records are passed over. Nothing when there is nothing to draw or the file is none.
std::optional<std::string> SvgOfMetafile(const std::string& metafile);

}  // namespace session
