// lispora.dll: stands for the generator that turns a drawing into a LISP description. It repeats
// the drawing's lines from the insertion point on; what it cannot do is told in "lispora.err"
// beside it.
#include <cmath>
#include <stdexcept>
#include <string>

#include "drawboard/DriveFiles.h"
#include "lispora/DxfDrawing.h"
#include "platform/Files.h"
#include "platform/Modules.h"
#include "quillmar/UserParts.h"
#include "recorder/Recorder.h"

namespace {

constexpr quillmar::recorder::Border border{"lispora", quillmar::recorder::Kind::Program};

std::string TextOf(const char* text) { return text != nullptr ? text : ""; }

std::string ErrorFile() {
  const std::string path =
      quillmar::platform::ModulePath(quillmar::platform::FindLoadedModule(QM_LISP_LIBRARY));
  return path.substr(0, path.rfind('\\') + 1) + QM_LISP_ERRORS;
}

// Where points that lie nearer than the tolerance become one.
std::string PointText(const lispora::Point& point, const lispora::Point& origin, double tolerance) {
  const auto rounded = [&](double value) {
    return std::to_string(std::round(value / tolerance) * tolerance);
  };
  return "(list (+ (car at) " + rounded(point.x - origin.x) + ") (+ (cadr at) " +
         rounded(point.y - origin.y) + "))";
}

std::string LispOf(const std::vector<lispora::Line>& lines, const lispora::Point& origin,
                   double tolerance) {
  std::string text = "(defun user-part (at)\n";
  for (const lispora::Line& line : lines) {
    text += "  (command \"_.PLINE\"";
    for (const lispora::Point& point : line.points) {
      text += "\n    " + PointText(point, origin, tolerance);
    }
    text += line.closed ? "\n    \"_C\")\n" : "\n    \"\")\n";
  }
  return text + ")\n";
}

void Write(const std::string& path, const std::string& text) {
  if (!drawboard::WriteWholeFile(path, text)) throw std::runtime_error("Cannot write " + path);
}

struct Order {
  std::string dxfPath;
  std::string outputBase;
  std::string view;
  lispora::Point origin;
  double tolerance;
};

void Generate(const Order& order) {
  if (order.view != "USER") throw std::runtime_error("There is no view " + order.view);
  if (!(order.tolerance > 0)) throw std::runtime_error("The tolerance is not positive");
  const auto drawing = drawboard::ReadWholeFile(order.dxfPath);
  if (!drawing) throw std::runtime_error("Cannot read " + order.dxfPath);
  const std::vector<lispora::Line> lines = lispora::ReadDxf(*drawing);
  if (lines.empty()) throw std::runtime_error("The drawing has no lines");
  Write(order.outputBase + ".lsp", LispOf(lines, order.origin, order.tolerance));
  Write(order.outputBase + ".prf", "[Variables]\r\n");
}

}  // namespace

namespace quillmar::lispora_functions {
namespace {

int GenerateLisp(const char* dxfPath, const char* outputBase, const char* view, const char*, int,
                 double x, double y, int, int, int, double firstTolerance, double) {
  const std::string errorFile = ErrorFile();
  platform::RemoveFile(errorFile);
  try {
    Generate({TextOf(dxfPath), TextOf(outputBase), TextOf(view), {x, y}, firstTolerance});
    return 1;
  } catch (const std::runtime_error& failure) {
    border.Note(failure.what());
    drawboard::WriteWholeFile(errorFile, std::string(failure.what()) + "\r\n");
    return 0;
  }
}

}  // namespace
}  // namespace quillmar::lispora_functions

#define EXPORT_LISP(...) \
  QM_BORDER_EXPORT(border, quillmar::lispora_functions, QM_CDECL, __VA_ARGS__)
QM_LISP_FUNCTIONS(EXPORT_LISP)
