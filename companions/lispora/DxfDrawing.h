// The lines of a DXF drawing, as far as a LISP description repeats them.
#pragma once

#include <string>
#include <vector>

namespace lispora {

struct Point {
  double x = 0;
  double y = 0;
};

struct Line {
  std::vector<Point> points;
  bool closed = false;
};

// The polylines and lines of the section ENTITIES; other entities are left out. Throws a
// std::runtime_error for a text that is no DXF drawing.
std::vector<Line> ReadDxf(const std::string& text);

}  // namespace lispora
