// What the host draws: circles and lines on layers, in the unit of the drawing.
#pragma once

#include <string>
#include <vector>

namespace hexaplan {

// Layers, as "Layers.ini" names them.
inline constexpr char kOutlineLayer[] = "OUTLINE";
inline constexpr char kCentreLayer[] = "CENTRE";

// What the lines of a layer look like.
struct LayerStyle {
  int colour;
  std::string lineType;
};
struct Layers {
  LayerStyle outline{7, "CONTINUOUS"};
  LayerStyle centre{1, "CENTER"};
};

struct Shape {
  const char* layer;
  double x1, y1;  // centre, or where a line begins
  double x2 = 0, y2 = 0;
  double diameter = 0;  // 0: a line
};

using Shapes = std::vector<Shape>;

// A section of a turned body: radius along its axis, with a bore through all of it.
struct TurnedSection {
  double length;
  double radius;
};
struct TurnedBody {
  std::vector<TurnedSection> sections;
  double bore = 0;  // radius
};

// The layers of a file "Layers.ini": section "Layers", key a layer's name, value its colour number
// and its line type. What the file does not say, or says wrongly, is as without one.
Layers ReadLayers(const std::string& file);

// DXF of release 12 with its layers and how far the drawing reaches.
std::string ToDxf(const Shapes& shapes, const Layers& layers = {});
// A placeable Windows metafile, as pictures in documents are.
std::string ToMetafile(const Shapes& shapes);
// Triangles of the surface, as text (STL).
std::string ToFacets(const TurnedBody& body, const std::string& name);

}  // namespace hexaplan
