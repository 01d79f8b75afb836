#include "hexaplan/host/DrawingFile.h"

#include "drawboard/DriveFiles.h"
#include "hexaplan/calculation/BoltedJointCalculation.h"
#include "hexaplan/calculation/CamCalculation.h"
#include "hexaplan/calculation/KeyCalculation.h"
#include "hexaplan/calculation/SheetFormatCalculation.h"
#include "hexaplan/calculation/SurfaceSymbolCalculation.h"
#include "hexaplan/host/PartDrawings.h"
#include "hexaplan/host/Shapes.h"
#include "platform/System.h"

namespace hexaplan {

namespace {

// The sections of a shaft, or a gear or a sleeve as the one section it is cut from.
TurnedBody BodyOf(const Values& values) {
  TurnedBody body;
  const int count = static_cast<int>(values.Of("#spiCount"));
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    body.sections.push_back({values.Of("l_" + number), values.Of("d_" + number) / 2.0});
  }
  if (count == 0 && values.Of("da") > 0.0) {
    body.sections.push_back({values.Of("b"), values.Of("da") / 2.0});
    body.bore = values.Of("dh") / 2.0;
  }
  return body;
}

void DrawFrame(Shapes& shapes, double left, double bottom, double right, double top) {
  shapes.push_back({kOutlineLayer, left, bottom, right, bottom});
  shapes.push_back({kOutlineLayer, right, bottom, right, top});
  shapes.push_back({kOutlineLayer, right, top, left, top});
  shapes.push_back({kOutlineLayer, left, top, left, bottom});
}

// The edge of the sheet, the frame and the title block in its corner, as large as they are beside
// a part that is drawn in its own size.
Shapes DrawSheet(const Values& values, const DrawingStyle&) {
  constexpr double kBinding = 20, kMargin = 10, kTitleWidth = 180, kTitleHeight = 55;
  const double scale = values.Of(kSheetScaleName);
  if (scale <= 0.0) return {};
  const SheetSize size = SizeOfSheet(static_cast<int>(values.Of(kSheetNumberName)));
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
Shapes DrawSurfaceSymbol(const Values& values, const DrawingStyle&) {
  constexpr double kSlope = 1.7320508;  // 60 degrees
  const double reach = kSymbolSide / kSlope;
  Shapes shapes = {{kOutlineLayer, 0, 0, -reach, kSymbolSide},
                   {kOutlineLayer, 0, 0, kSymbolHeight / kSlope, kSymbolHeight}};
  const auto process = static_cast<SurfaceProcess>(values.Of(kSymbolProcessName));
  if (process == SurfaceProcess::Removal) {
    shapes.push_back({kOutlineLayer, -reach, kSymbolSide, reach, kSymbolSide});
  }
  if (process == SurfaceProcess::NoRemoval) {
    shapes.push_back({kOutlineLayer, 0, kSymbolSide * 2 / 3, 0, 0, kSymbolSide * 2 / 3});
  }
  return shapes;
}

// By data-file type. Gears go by several names, and shafts of other makers are known by their
// sections.
struct DrawnKind {
  const Calculation& (*calculation)();
  Shapes (*draw)(const Values&, const DrawingStyle&);
};
constexpr DrawnKind kDrawnKinds[] = {
    {SheetFormats, DrawSheet}, {SurfaceSymbols, DrawSurfaceSymbol},
    {DiscCams, DrawCam},       {BoltedJoints, DrawFastener},
    {ParallelKeys, DrawKey},
};

Shapes DrawPart(const std::string& dataFileType, const Values& values, const DrawingStyle& style) {
  for (const DrawnKind& kind : kDrawnKinds) {
    if (quillmar::platform::EqualsNoCase(dataFileType, kind.calculation().DataFile())) {
      return kind.draw(values, style);
    }
  }
  if (values.Has("#spiCount")) return DrawShaft(values, style);
  return dataFileType.empty() ? Shapes() : DrawGear(values, style);
}

std::string ExtensionOf(const std::string& path) {
  const auto dot = path.find_last_of(".\\");
  return dot != std::string::npos && path[dot] == '.'
             ? quillmar::platform::LowerCase(path.substr(dot + 1))
             : std::string();
}

// What the file is to hold; empty for a part that cannot be drawn so.
std::string ContentsFor(const std::string& extension, const std::string& dataFileType,
                        const Values& values, const DrawingSettings& settings) {
  if (extension == "c3d" || extension == "c3p") {
    const TurnedBody body = BodyOf(values);
    return body.sections.empty() ? std::string() : ToFacets(body, dataFileType);
  }
  const Shapes shapes = DrawPart(dataFileType, values, {settings.axisOverlap});
  if (shapes.empty()) return {};
  return extension == "wmf" ? ToMetafile(shapes) : ToDxf(shapes, ReadLayers(settings.layersFile));
}

}  // namespace

bool WriteDrawing(const std::string& path, const std::string& dataFileType,
                  const std::vector<DataParameter>& parameters, const DrawingSettings& settings) {
  const std::string contents =
      ContentsFor(ExtensionOf(path), dataFileType, Values(parameters), settings);
  return !contents.empty() && !path.empty() && drawboard::WriteWholeFile(path, contents);
}

}  // namespace hexaplan
