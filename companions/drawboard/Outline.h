// Pictures of a document made from its outlines: DXF for drawings, SVG for previews.
#pragma once

#include <string>
#include <vector>

#include "drawboard/Document.h"

namespace drawboard {

// The outlines of all objects that the kernel can build, each object beside the one before it.
Outlines DrawDocument(const Document& document, const Kernel& kernel);

// DXF R12: one closed polyline for each outline, on layer "0". The header says how far they reach.
std::string OutlinesToDxf(const Outlines& outlines);
std::string OutlinesToSvg(const Outlines& outlines);

}  // namespace drawboard
