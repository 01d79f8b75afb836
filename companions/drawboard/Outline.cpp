#include "drawboard/Outline.h"

#include <algorithm>

#include "drawboard/DocumentJson.h"

namespace drawboard {
namespace {

// Free space between two objects and around a picture, as a part of the width drawn.
constexpr double kGap = 0.1;

struct Box {
  double left = 0, right = 0, bottom = 0, top = 0;
  double Width() const { return right - left; }
  double Height() const { return top - bottom; }
};

Box BoxOf(const Outlines& outlines) {
  Box box;
  bool first = true;
  for (const auto& outline : outlines) {
    for (const Point& point : outline) {
      if (first) box = {point.x, point.x, point.y, point.y};
      first = false;
      box.left = std::min(box.left, point.x);
      box.right = std::max(box.right, point.x);
      box.bottom = std::min(box.bottom, point.y);
      box.top = std::max(box.top, point.y);
    }
  }
  return box;
}

std::string Pair(int code, const std::string& value) {
  return std::to_string(code) + "\n" + value + "\n";
}

// A variable of the header that holds a point.
std::string DxfVariable(const char* name, double x, double y) {
  return Pair(9, name) + Pair(10, FormatNumber(x)) + Pair(20, FormatNumber(y)) + Pair(30, "0");
}

std::string DxfPolyline(const std::vector<Point>& outline) {
  std::string text = Pair(0, "POLYLINE") + Pair(8, "0") + Pair(66, "1") + Pair(70, "1");
  for (const Point& point : outline) {
    text += Pair(0, "VERTEX") + Pair(8, "0") + Pair(10, FormatNumber(point.x)) +
            Pair(20, FormatNumber(point.y)) + Pair(30, "0");
  }
  return text + Pair(0, "SEQEND");
}

std::string SvgPolygon(const std::vector<Point>& outline) {
  std::string points;
  for (const Point& point : outline) {
    if (!points.empty()) points += ' ';
    points += FormatNumber(point.x) + "," + FormatNumber(0.0 - point.y);
  }
  return "  <polygon points=\"" + points + "\"/>\n";
}

}  // namespace

Outlines DrawDocument(const Document& document, const Kernel& kernel) {
  Outlines all;
  double place = 0;
  for (const BoardObject& object : document.objects) {
    Outlines outlines = kernel.Draw(DescribePart(object, document));
    const Box box = BoxOf(outlines);
    for (auto& outline : outlines) {
      for (Point& point : outline) point.x += place - box.left;
      all.push_back(std::move(outline));
    }
    place += box.Width() * (1 + kGap);
  }
  return all;
}

std::string OutlinesToDxf(const Outlines& outlines) {
  const Box box = BoxOf(outlines);
  std::string text = Pair(0, "SECTION") + Pair(2, "HEADER") + Pair(9, "$ACADVER") +
                     Pair(1, "AC1009") + DxfVariable("$EXTMIN", box.left, box.bottom) +
                     DxfVariable("$EXTMAX", box.right, box.top) + Pair(0, "ENDSEC") +
                     Pair(0, "SECTION") + Pair(2, "ENTITIES");
  for (const auto& outline : outlines) text += DxfPolyline(outline);
  return text + Pair(0, "ENDSEC") + Pair(0, "EOF");
}

std::string OutlinesToSvg(const Outlines& outlines) {
  const Box box = BoxOf(outlines);
  const double margin = kGap * std::max({box.Width(), box.Height(), 1.0});
  const std::string view = FormatNumber(box.left - margin) + " " + FormatNumber(-box.top - margin) +
                           " " + FormatNumber(box.Width() + 2 * margin) + " " +
                           FormatNumber(box.Height() + 2 * margin);
  std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" + view +
                     "\" fill=\"none\" stroke=\"black\" stroke-width=\"" +
                     FormatNumber(margin / 40) + "\">\n";
  for (const auto& outline : outlines) text += SvgPolygon(outline);
  return text + "</svg>\n";
}

}  // namespace drawboard
