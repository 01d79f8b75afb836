#include "session/DrawingPicture.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <sstream>
#include <vector>

namespace session {
namespace {

constexpr double kDegree = 3.14159265358979 / 180;
constexpr double kMargin = 0.05;      // around the picture, as a part of its larger side
constexpr double kLineWidth = 0.004;  // the same
constexpr double kChainDash = 0.03;   // the same
constexpr double kArcStep = 5;        // degrees between two points of an arc
// Farther away nothing is drawn, and differences would not be numbers any more.
constexpr double kFarthest = 1e15;
constexpr const char* kChainLayer = "CENTRE";

// An entity: its groups by code, the last one of several.
struct Entity {
  std::string kind;
  std::map<int, std::string> groups;

  double Number(int code) const {
    const auto found = groups.find(code);
    double value = 0;
    if (found != groups.end()) {
      const std::string& text = found->second;
      const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
      std::from_chars(text.data() + begin, text.data() + text.size(), value);
    }
    return std::abs(value) <= kFarthest ? value : 0;
  }
  // The lowest bit of a number of flags.
  bool IsFlagged(int code) const { return std::fmod(std::trunc(Number(code)), 2) != 0; }
  bool OnChainLayer() const {
    const auto layer = groups.find(8);
    return layer != groups.end() && layer->second.rfind(kChainLayer, 0) == 0;
  }
};

std::string Trimmed(std::string line) {
  line.erase(line.find_last_not_of(" \r") + 1);
  line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
  return line;
}

std::vector<Entity> ReadEntities(const std::string& dxf) {
  std::istringstream lines(dxf);
  std::vector<Entity> entities;
  bool inside = false;
  std::string code, value;
  while (std::getline(lines, code) && std::getline(lines, value)) {
    const int number = std::atoi(code.c_str());
    value = Trimmed(value);
    if (number == 2 && !inside) inside = value == "ENTITIES";
    if (!inside) continue;
    if (number == 0) {
      if (value == "ENDSEC") break;
      entities.push_back({value, {}});
    } else if (!entities.empty()) {
      entities.back().groups[number] = value;
    }
  }
  return entities;
}

// Points in the picture's axes, y down.
struct Path {
  std::vector<std::pair<double, double>> points;
  bool closed = false;
  bool chain = false;

  void Add(double x, double y) { points.emplace_back(Rounded(x), Rounded(-y)); }
  // A millionth; and no zero has a sign.
  static double Rounded(double value) { return std::round(value * 1e6) / 1e6 + 0.0; }
};

// `sweep` is at most one turn, in degrees.
Path ArcPath(const Entity& entity, double from, double sweep) {
  Path path;
  const int steps = std::max(1, static_cast<int>(std::ceil(sweep / kArcStep)));
  for (int i = 0; i <= steps; ++i) {
    const double angle = (from + sweep * i / steps) * kDegree;
    path.Add(entity.Number(10) + entity.Number(40) * std::cos(angle),
             entity.Number(20) + entity.Number(40) * std::sin(angle));
  }
  return path;
}

std::vector<Path> PathsOf(const std::vector<Entity>& entities) {
  std::vector<Path> paths;
  Path* open = nullptr;  // the polyline whose vertices follow
  for (const Entity& entity : entities) {
    if (entity.kind == "VERTEX" && open != nullptr) {
      open->Add(entity.Number(10), entity.Number(20));
      continue;
    }
    open = nullptr;
    Path path;
    if (entity.kind == "LINE") {
      path.Add(entity.Number(10), entity.Number(20));
      path.Add(entity.Number(11), entity.Number(21));
    } else if (entity.kind == "CIRCLE") {
      path = ArcPath(entity, 0, 360);
    } else if (entity.kind == "ARC") {
      const double sweep = std::fmod(entity.Number(51) - entity.Number(50), 360);
      path = ArcPath(entity, entity.Number(50), sweep > 0 ? sweep : sweep + 360);
    } else if (entity.kind == "POLYLINE") {
      path.closed = entity.IsFlagged(70);
    } else {
      continue;
    }
    path.chain = entity.OnChainLayer();
    paths.push_back(std::move(path));
    if (entity.kind == "POLYLINE") open = &paths.back();
  }
  std::erase_if(paths, [](const Path& path) { return path.points.size() < 2; });
  return paths;
}

std::optional<std::string> SvgOfPaths(const std::vector<Path>& paths) {
  if (paths.empty()) return std::nullopt;
  double left = INFINITY, right = -INFINITY, top = INFINITY, bottom = -INFINITY;
  for (const Path& path : paths) {
    for (const auto& [x, y] : path.points) {
      left = std::min(left, x), right = std::max(right, x);
      top = std::min(top, y), bottom = std::max(bottom, y);
    }
  }
  const double size = std::max({right - left, bottom - top, 1e-6});
  const double margin = kMargin * size;
  std::string text = fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"{:.6g} {:.6g} {:.6g} {:.6g}\" "
      "fill=\"none\" "
      "stroke=\"black\" stroke-linejoin=\"round\" stroke-width=\"{:.4g}\">\n",
      left - margin, top - margin, right - left + 2 * margin, bottom - top + 2 * margin,
      kLineWidth * size);
  for (const Path& path : paths) {
    std::string data;
    for (const auto& [x, y] : path.points) {
      data += fmt::format("{}{:.6g} {:.6g}", data.empty() ? "M" : "L", x, y);
    }
    const double dash = kChainDash * size;
    text += fmt::format("<path d=\"{}{}\"{}/>\n", data, path.closed ? "Z" : "",
                        path.chain
                            ? fmt::format(" stroke-width=\"{:.4g}\" stroke-dasharray=\"{:.4g} "
                                          "{:.4g} {:.4g} {:.4g}\"",
                                          kLineWidth * size / 2, dash, dash / 4, dash / 8, dash / 4)
                            : "");
  }
  return text + "</svg>\n";
}

// --- metafiles: records of 16-bit words, little-endian ---

class Metafile {
 public:
  explicit Metafile(const std::string& bytes) : bytes(bytes) {}

  std::vector<Path> Paths() {
    if (Word(0) != 0xCDD7 || Word(1) != 0x9AC6) return {};
    // Behind the two headers: how long each record is in words, what it is, its words.
    std::size_t size = 0;
    for (std::size_t at = kHeaders; at + 3 <= bytes.size() / 2; at += size) {
      size = Word(at) + (static_cast<std::size_t>(Word(at + 1)) << 16);
      if (size < 3 || size > bytes.size() / 2 - at) break;
      Add(Word(at + 2), at + 3, size - 3);
    }
    std::erase_if(paths, [](const Path& path) { return path.points.size() < 2; });
    return std::move(paths);
  }

 private:
  static constexpr std::size_t kHeaders = 11 + 9;
  static constexpr int kEllipse = 0x0418, kMoveTo = 0x0214, kLineTo = 0x0213;

  void Add(int function, std::size_t at, std::size_t count) {
    if (function == kMoveTo && count == 2) {
      paths.emplace_back().Add(Number(at + 1), -Number(at));
    } else if (function == kLineTo && count == 2 && !paths.empty()) {
      paths.back().Add(Number(at + 1), -Number(at));
    } else if (function == kEllipse && count == 4) {
      Entity circle;  // the box around it: bottom, right, top, left
      circle.groups[10] = fmt::format("{}", (Number(at + 1) + Number(at + 3)) / 2);
      circle.groups[20] = fmt::format("{}", -(Number(at) + Number(at + 2)) / 2);
      circle.groups[40] = fmt::format("{}", std::abs(Number(at + 1) - Number(at + 3)) / 2);
      paths.push_back(ArcPath(circle, 0, 360));
    }
  }
  int Word(std::size_t word) const {
    if (2 * word + 1 >= bytes.size()) return 0;
    return static_cast<unsigned char>(bytes[2 * word]) |
           static_cast<unsigned char>(bytes[2 * word + 1]) << 8;
  }
  double Number(std::size_t word) const { return static_cast<std::int16_t>(Word(word)); }

  const std::string& bytes;
  std::vector<Path> paths;
};

}  // namespace

std::optional<std::string> SvgOfDxf(const std::string& dxf) {
  return SvgOfPaths(PathsOf(ReadEntities(dxf)));
}

std::optional<std::string> SvgOfMetafile(const std::string& metafile) {
  return SvgOfPaths(Metafile(metafile).Paths());
}

}  // namespace session
