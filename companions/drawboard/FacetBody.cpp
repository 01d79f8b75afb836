#include "drawboard/FacetBody.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "drawboard/Design.h"

namespace drawboard {
namespace {

// From one corner to the next, as the facet runs.
using Edge = std::pair<Corner, Corner>;

// Of the largest extent: what is nearer to a line than this lies on it.
constexpr double kStraight = 1e-7;

// The next word of a text, which loses it.
std::string_view TakeWord(std::string_view& text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  return word;
}

double TakeNumber(std::string_view& text) {
  const std::string_view word = TakeWord(text);
  double number = 0;
  const auto read = std::from_chars(word.data(), word.data() + word.size(), number);
  Demand(read.ec == std::errc() && read.ptr == word.data() + word.size() && std::isfinite(number),
         "A corner of the model file is no number");
  return number + 0.0;  // a zero has no sign
}

// How often each edge is passed, less how often the other way. Nothing is left over of the edges
// inside a surface.
std::map<Edge, int> BorderOf(const std::vector<Facet>& facets) {
  std::map<Edge, int> border;
  const auto add = [&](const Edge& edge, int sign) {
    const auto place = border.try_emplace(edge, 0).first;
    place->second += sign;
    if (place->second == 0) border.erase(place);
  };
  for (const Facet& facet : facets) {
    for (std::size_t k = 0; k < 3; ++k) {
      const Corner& a = facet[k];
      const Corner& b = facet[(k + 1) % 3];
      if (a < b) {
        add({a, b}, 1);
      } else {
        add({b, a}, -1);
      }
    }
  }
  return border;
}

// Six times the volume between the facet and the origin.
double Determinant(const Facet& f) {
  return f[0][0] * (f[1][1] * f[2][2] - f[1][2] * f[2][1]) -
         f[0][1] * (f[1][0] * f[2][2] - f[1][2] * f[2][0]) +
         f[0][2] * (f[1][0] * f[2][1] - f[1][1] * f[2][0]);
}

// Perpendicular to the facet, twice its area long.
Corner Normal(const Facet& f) {
  Corner u{}, v{};
  for (std::size_t k = 0; k < 3; ++k) {
    u[k] = f[1][k] - f[0][k];
    v[k] = f[2][k] - f[0][k];
  }
  return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

bool IsSeenFromAbove(const Facet& facet) {
  const Corner normal = Normal(facet);
  return normal[2] > kStraight * std::hypot(normal[0], normal[1], normal[2]);
}

bool IsBetween(const Point& a, const Point& b, const Point& c, double tolerance) {
  const double dx = c.x - a.x, dy = c.y - a.y;
  const double length = std::hypot(dx, dy);
  const double off = std::abs((b.x - a.x) * dy - (b.y - a.y) * dx);
  return off <= tolerance * std::max(length, tolerance);
}

// Without the points that lie on the line between their neighbours.
std::vector<Point> Simplified(const std::vector<Point>& outline, double tolerance) {
  std::vector<Point> points;
  for (const Point& point : outline) {
    while (points.size() > 1 &&
           IsBetween(points[points.size() - 2], points.back(), point, tolerance)) {
      points.pop_back();
    }
    points.push_back(point);
  }
  while (points.size() > 2 &&
         IsBetween(points[points.size() - 2], points.back(), points[0], tolerance)) {
    points.pop_back();
  }
  while (points.size() > 2 && IsBetween(points.back(), points[0], points[1], tolerance)) {
    points.erase(points.begin());
  }
  return points;
}

}  // namespace

std::vector<Facet> ReadFacets(std::string_view text) {
  std::vector<Facet> facets;
  Facet facet{};
  std::size_t corners = 0;
  while (!text.empty()) {
    if (TakeWord(text) != "vertex") continue;
    for (double& each : facet[corners]) each = TakeNumber(text);
    DemandSize(
        {std::abs(facet[corners][0]), std::abs(facet[corners][1]), std::abs(facet[corners][2])});
    corners = (corners + 1) % 3;
    if (corners == 0) facets.push_back(facet);
  }
  Demand(!facets.empty() && corners == 0, "The model file holds no facets");
  return facets;
}

FacetBody::FacetBody(std::string_view text) : facets(ReadFacets(text)) {
  Demand(BorderOf(facets).empty(), "The body of the model file is not closed");
  Demand(Weigh(1).volume > 0, "The body of the model file has no volume");
}

// Sums over the tetrahedra between the facets and the origin; what lies outside the body counts
// once up and once down.
MassProperties FacetBody::Weigh(double density) const {
  MassProperties p;
  double first[3] = {}, second[3][3] = {};
  for (const Facet& f : facets) {
    const Corner normal = Normal(f);
    p.area += std::hypot(normal[0], normal[1], normal[2]) / 2;
    const double det = Determinant(f);
    p.volume += det / 6;
    for (std::size_t i = 0; i < 3; ++i) {
      const double sum = f[0][i] + f[1][i] + f[2][i];
      first[i] += det * sum / 24;
      for (std::size_t j = i; j < 3; ++j) {
        double products = sum * (f[0][j] + f[1][j] + f[2][j]);
        for (const Corner& corner : f) products += corner[i] * corner[j];
        second[i][j] += det * products / 120;
      }
    }
  }
  p.mass = p.volume * density;
  p.centerX = first[0] / p.volume;
  p.centerY = first[1] / p.volume;
  p.centerZ = first[2] / p.volume;
  const auto central = [&](std::size_t i, std::size_t j) {
    return (second[i][j] - first[i] * first[j] / p.volume) * density;
  };
  p.momentXX = central(1, 1) + central(2, 2);
  p.momentYY = central(0, 0) + central(2, 2);
  p.momentZZ = central(0, 0) + central(1, 1);
  p.momentXY = central(0, 1);
  p.momentXZ = central(0, 2);
  p.momentYZ = central(1, 2);
  return p;
}

// The border of what is seen from above, loop by loop.
Outlines FacetBody::Draw() const {
  std::vector<Facet> seen;
  std::copy_if(facets.begin(), facets.end(), std::back_inserter(seen), IsSeenFromAbove);
  std::multimap<Corner, Corner> next;
  double extent = 0;
  for (const auto& [edge, passes] : BorderOf(seen)) {
    for (int i = 0; i < passes; ++i) next.emplace(edge.first, edge.second);
    for (int i = 0; i > passes; --i) next.emplace(edge.second, edge.first);
    for (const double each : edge.first) extent = std::max(extent, std::abs(each));
  }
  Outlines outlines;
  while (!next.empty()) {
    std::vector<Point> outline;
    for (auto step = next.begin(); step != next.end();) {
      const Corner to = step->second;
      outline.push_back({step->first[0], step->first[1]});
      next.erase(step);
      step = next.find(to);
    }
    outline = Simplified(outline, kStraight * extent);
    if (outline.size() > 2) outlines.push_back(std::move(outline));
  }
  return outlines;
}

}  // namespace drawboard
