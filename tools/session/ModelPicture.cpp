#include "session/ModelPicture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "drawboard/BoardError.h"
#include "drawboard/FacetBody.h"

namespace session {
namespace {

using drawboard::Facet;
using Point = drawboard::Corner;

constexpr double kSmooth = 0.98;      // cosine of the angle between facets of one round surface
constexpr double kMargin = 0.05;      // around the picture, as a part of its larger side
constexpr double kLineWidth = 0.004;  // the same

// None when the text is no body's.
std::vector<Facet> FacetsOf(const std::string& text) {
  try {
    return drawboard::ReadFacets(text);
  } catch (const drawboard::BoardError&) {
    return {};
  }
}

double Dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Point NormalOf(const Facet& facet) {
  Point u{}, v{};
  for (std::size_t k = 0; k < 3; ++k) {
    u[k] = facet[1][k] - facet[0][k];
    v[k] = facet[2][k] - facet[0][k];
  }
  Point normal = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  const double length = std::sqrt(Dot(normal, normal));
  if (length > 0) {
    for (double& each : normal) each /= length;
  }
  return normal;
}

// --- GLB: a header, a block of JSON, a block of numbers ---

void PutNumber(std::string& bytes, std::uint32_t number) {
  for (int i = 0; i < 4; ++i, number >>= 8) bytes += static_cast<char>(number & 0xFF);
}

void PutBlock(std::string& bytes, std::string_view kind, std::string contents, char filler) {
  contents.resize((contents.size() + 3) / 4 * 4, filler);
  PutNumber(bytes, static_cast<std::uint32_t>(contents.size()));
  bytes += std::string(kind) + contents;
}

std::string List(const Point& point) {
  return fmt::format("[{:.9g},{:.9g},{:.9g}]", point[0], point[1], point[2]);
}

// --- picture ---

// The edges between facets by their ends, with the normals of the facets that meet there.
using Edges = std::map<std::pair<Point, Point>, std::vector<Point>>;

Edges EdgesOf(const std::vector<Facet>& facets) {
  Edges edges;
  for (const Facet& facet : facets) {
    const Point normal = NormalOf(facet);
    for (std::size_t k = 0; k < 3; ++k) {
      const auto ends = std::minmax(facet[k], facet[(k + 1) % 3]);
      edges[{ends.first, ends.second}].push_back(normal);
    }
  }
  return edges;
}

// An edge that is seen: sharp, or where a round surface turns away.
bool IsDrawn(const std::vector<Point>& normals) {
  constexpr Point kToViewer = {1, 1, 1};
  const auto faces = [&](const Point& normal) { return Dot(normal, kToViewer) > 1e-9; };
  const auto facing = std::count_if(normals.begin(), normals.end(), faces);
  if (facing == 0) return false;
  return normals.size() != 2 || facing == 1 || Dot(normals[0], normals[1]) < kSmooth;
}

// In the picture's plane, y down.
std::pair<double, double> Project(const Point& point) {
  constexpr double kAcross = 0.70710678, kDown = 0.40824829;
  return {(point[1] - point[0]) * -kAcross, (point[0] + point[1] - 2 * point[2]) * kDown};
}

}  // namespace

std::optional<std::string> GlbOfFacets(const std::string& text) {
  const std::vector<Facet> facets = FacetsOf(text);
  if (facets.empty()) return std::nullopt;
  Point low = facets[0][0];
  Point high = low;
  std::string numbers;
  for (const Facet& facet : facets) {
    for (const Point& corner : facet) {
      for (std::size_t k = 0; k < 3; ++k) {
        const auto rounded = static_cast<float>(corner[k]);
        low[k] = std::min<double>(low[k], rounded);
        high[k] = std::max<double>(high[k], rounded);
        std::uint32_t bits = 0;
        std::memcpy(&bits, &rounded, sizeof bits);
        PutNumber(numbers, bits);
      }
    }
  }
  // Millimetres become metres; a face is a net of its own, so all corners stand one by one.
  const std::string json = fmt::format(
      R"({{"asset":{{"version":"2.0"}},"scene":0,"scenes":[{{"nodes":[0]}}],)"
      R"("nodes":[{{"mesh":0,"scale":[0.001,0.001,0.001]}}],)"
      R"("meshes":[{{"primitives":[{{"attributes":{{"POSITION":0}},"indices":1}}]}}],)"
      R"("accessors":[{{"bufferView":0,"componentType":5126,"count":{0},"type":"VEC3","min":{2},"max":{3}}},)"
      R"({{"bufferView":1,"componentType":5125,"count":{0},"type":"SCALAR"}}],)"
      R"("bufferViews":[{{"buffer":0,"byteLength":{1}}},{{"buffer":0,"byteOffset":{1},"byteLength":{4}}}],)"
      R"("buffers":[{{"byteLength":{5}}}]}})",
      3 * facets.size(), numbers.size(), List(low), List(high), 12 * facets.size(),
      numbers.size() + 12 * facets.size());
  for (std::uint32_t i = 0; i < 3 * facets.size(); ++i) PutNumber(numbers, i);
  std::string blocks;
  PutBlock(blocks, "JSON", json, ' ');
  PutBlock(blocks, std::string_view("BIN\0", 4), std::move(numbers), '\0');
  std::string glb = "glTF";
  PutNumber(glb, 2);
  PutNumber(glb, static_cast<std::uint32_t>(glb.size() + 4 + blocks.size()));
  return glb + blocks;
}

std::optional<std::string> SvgOfFacets(const std::string& text) {
  std::string data;
  double left = INFINITY, right = -INFINITY, top = INFINITY, bottom = -INFINITY;
  for (const auto& [ends, normals] : EdgesOf(FacetsOf(text))) {
    if (!IsDrawn(normals)) continue;
    for (const Point* end : {&ends.first, &ends.second}) {
      const auto [x, y] = Project(*end);
      data += fmt::format("{}{:.5g} {:.5g}", end == &ends.first ? "M" : "L", x, y);
      left = std::min(left, x), right = std::max(right, x);
      top = std::min(top, y), bottom = std::max(bottom, y);
    }
  }
  if (data.empty()) return std::nullopt;
  const double size = std::max({right - left, bottom - top, 1e-6});
  const double margin = kMargin * size;
  return fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"{:.6g} {:.6g} {:.6g} {:.6g}\" "
      "fill=\"none\" stroke=\"black\" stroke-linecap=\"round\" stroke-width=\"{:.4g}\">\n"
      "<path d=\"{}\"/>\n</svg>\n",
      left - margin, top - margin, right - left + 2 * margin, bottom - top + 2 * margin,
      kLineWidth * size, data);
}

}  // namespace session
