#include "lispora/DxfDrawing.h"

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace lispora {
namespace {

// Group codes.
constexpr int kEntity = 0;
constexpr int kX = 10;
constexpr int kY = 20;
constexpr int kEndX = 11;
constexpr int kEndY = 21;
constexpr int kFlags = 70;

struct Group {
  int code;
  std::string value;
};

// Groups of two lines each, up to the end mark.
std::vector<Group> ReadGroups(const std::string& text) {
  std::vector<Group> groups;
  std::istringstream lines(text);
  for (std::string code, value; std::getline(lines, code) && std::getline(lines, value);) {
    if (!value.empty() && value.back() == '\r') value.pop_back();
    groups.push_back({std::atoi(code.c_str()), value});
    if (groups.back().code == kEntity && value == "EOF") return groups;
  }
  throw std::runtime_error("The drawing does not end as a DXF file does");
}

class Collector {
 public:
  void Take(const Group& group) {
    if (group.code == kEntity) {
      BeginEntity(group.value);
    } else if (!lines.empty() && !entity.empty()) {
      TakeValue(group);
    }
  }

  std::vector<Line> lines;

 private:
  void BeginEntity(const std::string& name) {
    entity = name == "POLYLINE" || name == "VERTEX" || name == "LINE" ? name : "";
    if (name == "POLYLINE") lines.emplace_back();
    if (name == "LINE") lines.push_back({std::vector<Point>(2), false});
    if (name == "VERTEX" && !lines.empty()) lines.back().points.emplace_back();
  }

  void TakeValue(const Group& group) {
    Line& line = lines.back();
    const double value = std::strtod(group.value.c_str(), nullptr);
    if (entity == "POLYLINE") {
      // The lowest flag closes it.
      if (group.code == kFlags) line.closed = std::fmod(std::trunc(value), 2) != 0;
      return;
    }
    Point& begin = entity == "LINE" ? line.points.front() : line.points.back();
    if (group.code == kX) begin.x = value;
    if (group.code == kY) begin.y = value;
    if (group.code == kEndX) line.points.back().x = value;
    if (group.code == kEndY) line.points.back().y = value;
  }

  std::string entity;  // whose values follow; empty for one that is left out
};

}  // namespace

std::vector<Line> ReadDxf(const std::string& text) {
  Collector collector;
  for (const Group& group : ReadGroups(text)) collector.Take(group);
  return std::move(collector.lines);
}

}  // namespace lispora
