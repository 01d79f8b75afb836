// DXF drawings for their two readers: the picture that the session's tool makes, and the lines that
// a LISP description repeats.
#include <cmath>
#include <stdexcept>
#include <tuple>

#include "Fuzzing.h"
#include "lispora/DxfDrawing.h"
#include "session/DrawingPicture.h"

namespace {

using quillmar::fuzz::Require;
using Lines = std::vector<lispora::Line>;

void Picture(const std::string& dxf) {
  const auto svg = session::SvgOfDxf(dxf);
  if (!svg) return;
  Require(svg->starts_with("<svg ") && svg->ends_with("</svg>\n"), "a picture is a whole one");
  for (const char* noNumber : {"nan", "inf"}) {
    Require(svg->find(noNumber) == std::string::npos, "every coordinate is a number");
  }
}

// False for a text that is no drawing, of which nothing is said.
bool Read(const std::string& dxf, Lines& lines) {
  try {
    lines = lispora::ReadDxf(dxf);
    return true;
  } catch (const std::runtime_error&) {
    return false;
  }
}

// Bit by bit: a coordinate may be no number.
bool AreSame(double left, double right) {
  return left == right || (std::isnan(left) && std::isnan(right));
}

bool AreSame(const Lines& left, const Lines& right) {
  return std::equal(
      left.begin(), left.end(), right.begin(), right.end(), [](const auto& a, const auto& b) {
        return a.closed == b.closed &&
               std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                          [](const lispora::Point& p, const lispora::Point& q) {
                            return AreSame(p.x, q.x) && AreSame(p.y, q.y);
                          });
      });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string dxf(quillmar::fuzz::Input(data, size));
  Picture(dxf);
  Lines lines;
  if (!Read(dxf, lines)) return 0;
  Lines again;
  Require(Read(dxf + "\n0\nLINE\n0\nEOF\n", again) && AreSame(lines, again),
          "behind its end mark a drawing says nothing");
  return 0;
}
