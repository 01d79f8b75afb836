#include "hexaplan/host/DrawingFile.h"

#include <map>

#include "drawboard/DriveFiles.h"
#include "hexaplan/calculation/SheetFormatCalculation.h"
#include "hexaplan/calculation/SurfaceSymbolCalculation.h"
#include "hexaplan/host/Shapes.h"
#include "platform/System.h"

namespace hexaplan {

namespace {

using Values = std::map<std::string, double, NameLess>;

double ValueOf(const Values& values, const std::string& name) {
  const auto found = values.find(name);
  return found != values.end() ? found->second : 0.0;
}

Shapes DrawGear(const Values& values) {
  const double tip = ValueOf(values, "da");
  if (tip <= 0.0) return {};
  Shapes shapes = {{kOutlineLayer, 0, 0, 0, 0, tip},
                   {kCentreLayer, 0, 0, 0, 0, ValueOf(values, "d")},
                   {kOutlineLayer, 0, 0, 0, 0, ValueOf(values, "df")}};
  if (ValueOf(values, "dh") > 0.0)
    shapes.push_back({kOutlineLayer, 0, 0, 0, 0, ValueOf(values, "dh")});
  shapes.push_back({kCentreLayer, -0.55 * tip, 0, 0.55 * tip, 0});
  shapes.push_back({kCentreLayer, 0, -0.55 * tip, 0, 0.55 * tip});
  return shapes;
}

// The sections of a shaft, or a gear as the one section it is cut from.
TurnedBody BodyOf(const Values& values) {
  TurnedBody body;
  const int count = static_cast<int>(ValueOf(values, "#spiCount"));
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    body.sections.push_back({ValueOf(values, "l_" + number), ValueOf(values, "d_" + number) / 2.0});
  }
  if (count == 0 && ValueOf(values, "da") > 0.0) {
    body.sections.push_back({ValueOf(values, "b"), ValueOf(values, "da") / 2.0});
    body.bore = ValueOf(values, "dh") / 2.0;
  }
  return body;
}

Shapes DrawShaft(const Values& values) {
  Shapes shapes;
  double x = 0.0;
  double before = 0.0;
  for (const TurnedSection& section : BodyOf(values).sections) {
    for (const double side : {1.0, -1.0}) {
      shapes.push_back({kOutlineLayer, x, side * before, x, side * section.radius});
      shapes.push_back(
          {kOutlineLayer, x, side * section.radius, x + section.length, side * section.radius});
    }
    before = section.radius;
    x += section.length;
  }
  if (x <= 0.0) return {};
  for (const double side : {1.0, -1.0}) shapes.push_back({kOutlineLayer, x, side * before, x, 0});
  shapes.push_back({kCentreLayer, -0.05 * x, 0, 1.05 * x, 0});
  return shapes;
}

void DrawFrame(Shapes& shapes, double left, double bottom, double right, double top) {
  shapes.push_back({kOutlineLayer, left, bottom, right, bottom});
  shapes.push_back({kOutlineLayer, right, bottom, right, top});
  shapes.push_back({kOutlineLayer, right, top, left, top});
  shapes.push_back({kOutlineLayer, left, top, left, bottom});
}

// The edge of the sheet, the frame and the title block in its corner, as large as they are beside
// a part that is drawn in its own size.
Shapes DrawSheet(const Values& values) {
  constexpr double kBinding = 20, kMargin = 10, kTitleWidth = 180, kTitleHeight = 55;
  const double scale = ValueOf(values, kSheetScaleName);
  if (scale <= 0.0) return {};
  const SheetSize size = SizeOfSheet(static_cast<int>(ValueOf(values, kSheetNumberName)));
  Shapes shapes;
  DrawFrame(shapes, 0, 0, size.width / scale, size.height / scale);
  DrawFrame(shapes, kBinding / scale, kMargin / scale, (size.width - kMargin) / scale,
            (size.height - kMargin) / scale);
  DrawFrame(shapes, (size.width - kMargin - kTitleWidth) / scale, kMargin / scale,
            (size.width - kMargin) / scale, (kMargin + kTitleHeight) / scale);
  return shapes;
}

// The angle on the surface at the origin, its right arm the longer one; a bar closes it where
// material is removed, a circle fills it where that is forbidden.
Shapes DrawSurfaceSymbol(const Values& values) {
  constexpr double kSlope = 1.7320508;  // 60 degrees
  const double reach = kSymbolSide / kSlope;
  Shapes shapes = {{kOutlineLayer, 0, 0, -reach, kSymbolSide},
                   {kOutlineLayer, 0, 0, kSymbolHeight / kSlope, kSymbolHeight}};
  const auto process = static_cast<SurfaceProcess>(ValueOf(values, kSymbolProcessName));
  if (process == SurfaceProcess::Removal) {
    shapes.push_back({kOutlineLayer, -reach, kSymbolSide, reach, kSymbolSide});
  }
  if (process == SurfaceProcess::NoRemoval) {
    shapes.push_back({kOutlineLayer, 0, kSymbolSide * 2 / 3, 0, 0, kSymbolSide * 2 / 3});
  }
  return shapes;
}

Shapes DrawPart(const std::string& dataFileType, const Values& values) {
  using quillmar::platform::EqualsNoCase;
  if (EqualsNoCase(dataFileType, SheetFormats().DataFile())) return DrawSheet(values);
  if (EqualsNoCase(dataFileType, SurfaceSymbols().DataFile())) return DrawSurfaceSymbol(values);
  if (values.count("#spiCount") != 0) return DrawShaft(values);
  return dataFileType.empty() ? Shapes() : DrawGear(values);
}

std::string ExtensionOf(const std::string& path) {
  const auto dot = path.find_last_of(".\\");
  return dot != std::string::npos && path[dot] == '.'
             ? quillmar::platform::LowerCase(path.substr(dot + 1))
             : std::string();
}

// What the file is to hold; empty for a part that cannot be drawn so.
std::string ContentsFor(const std::string& extension, const std::string& dataFileType,
                        const Values& values) {
  if (extension == "c3d" || extension == "c3p") {
    const TurnedBody body = BodyOf(values);
    return body.sections.empty() ? std::string() : ToFacets(body, dataFileType);
  }
  const Shapes shapes = DrawPart(dataFileType, values);
  if (shapes.empty()) return {};
  return extension == "wmf" ? ToMetafile(shapes) : ToDxf(shapes);
}

}  // namespace

bool WriteDrawing(const std::string& path, const std::string& dataFileType,
                  const std::vector<DataParameter>& parameters) {
  Values values;
  for (const DataParameter& each : parameters) {
    double value = 0.0;
    if (ParseNumber(each.value, value)) values[each.name] = value;
  }
  const std::string contents = ContentsFor(ExtensionOf(path), dataFileType, values);
  return !contents.empty() && !path.empty() && drawboard::WriteWholeFile(path, contents);
}

}  // namespace hexaplan
