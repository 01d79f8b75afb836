// 2D: drawings, symbols, formats, and the files that the CAD draws of its document.
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include "drawboard/BoardError.h"
#include "drawboard/DriveFiles.h"
#include "drawboard/Driver.h"
#include "drawboard/Imports.h"
#include "drawboard/Outline.h"

namespace drawboard {
namespace {

// The caller's preview buffer takes this many characters beyond the path that it holds.
constexpr std::size_t kPreviewRoom = 10;

struct SheetCall {
  Kind kind;
  const char* drawingFile;
  const char* protocolId;
  const char* connection;
  Placement placement;
  NamedTexts extendedData = {};
};

Placement Place(int metric, double x, double y, double level) {
  if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(level)) {
    throw BoardError("The place of the drawing is no number");
  }
  Placement placement;
  placement.metric = metric != 0;
  placement.x = x;
  placement.y = y;
  placement.level = level;
  return placement;
}

Placement PlaceSymbol(int metric, const char* namePrefix, double scale) {
  if (!std::isfinite(scale)) throw BoardError("The scale of the format is no number");
  Placement placement;
  placement.metric = metric != 0;
  placement.namePrefix = TextOf(namePrefix);
  placement.scale = scale;
  return placement;
}

// The new placement keeps the document's copy of the drawing, which is written anew.
void Apply(BoardObject& object, const SheetCall& call, const Document& document,
           FileChanges& files) {
  std::string copy = object.placement ? object.placement->drawingFile : std::string();
  object.placement = call.placement;
  ImportFile(document, object.name, TextOf(call.drawingFile), copy, files);
  object.placement->drawingFile = copy;
  if (call.kind == Kind::Drawing) object.extendedData = call.extendedData;
}

int InsertOnSheet(const SheetCall& call) {
  BoardObject object;
  object.kind = call.kind;
  object.protocolId = TextOf(call.protocolId);
  object.connection = TextOf(call.connection);
  TheAddin().board.Insert(std::move(object), {},
                          [&](BoardObject& placed, Document& next, FileChanges& files) {
                            Apply(placed, call, next, files);
                          });
  return 1;
}

int ChangeOnSheet(const SheetCall& call) {
  TheAddin().board.ChangeObjects(TextOf(call.protocolId), {},
                                 [&](BoardObject& object, Document& next, FileChanges& files) {
                                   Connect(object, TextOf(call.connection));
                                   Apply(object, call, next, files);
                                 });
  return 1;
}

// Drawings of a user part bear the path of its preview and a number. Which one this is; nothing for
// any other drawing.
std::optional<std::size_t> SheetNumber(const std::string& previewed, const std::string& fileName) {
  constexpr std::string_view kExtension = ".dxf";
  if (previewed.empty() || !fileName.starts_with(previewed) || !fileName.ends_with(kExtension)) {
    return std::nullopt;
  }
  const std::string digits =
      fileName.substr(previewed.size(), fileName.size() - previewed.size() - kExtension.size());
  std::size_t number = 0;
  const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (end.ec != std::errc() || end.ptr != digits.data() + digits.size()) return std::nullopt;
  return number;
}

// The whole document first, then each object by itself when there are several.
Outlines DrawSheet(const Document& document, const Kernel& kernel, std::size_t number) {
  std::vector<Outlines> sheets{DrawDocument(document, kernel)};
  if (sheets[0].empty()) throw BoardError("The document has nothing to draw");
  for (const BoardObject& object : document.objects) {
    Document alone;
    alone.unit = document.unit;
    alone.objects.push_back(object);
    Outlines outlines = DrawDocument(alone, kernel);
    if (!outlines.empty()) sheets.push_back(std::move(outlines));
  }
  if (sheets.size() == 2) sheets.pop_back();
  if (number >= sheets.size()) throw BoardError("The document has no further drawing");
  return sheets[number];
}

}  // namespace

namespace driver {

int Insert2dPart(const char* drawingFile, const char* protocolId, const char* connection,
                 int metric, const ExtDataPair* pairs, int count, double x, double y,
                 double level) {
  return InsertOnSheet({Kind::Drawing, drawingFile, protocolId, connection,
                        Place(metric, x, y, level), CopyPairs(pairs, count)});
}

int Change2dPart(const char* drawingFile, const char* protocolId, const char* connection,
                 int metric, const ExtDataPair* pairs, int count, double x, double y,
                 double level) {
  return ChangeOnSheet({Kind::Drawing, drawingFile, protocolId, connection,
                        Place(metric, x, y, level), CopyPairs(pairs, count)});
}

int InsertSymbol(const char* drawingFile, const char* protocolId, const char* connection,
                 int metric, const char* namePrefix) {
  return InsertOnSheet(
      {Kind::Symbol, drawingFile, protocolId, connection, PlaceSymbol(metric, namePrefix, 1)});
}

int ChangeSymbol(const char* drawingFile, const char* protocolId, const char* connection,
                 int metric, const char* namePrefix) {
  return ChangeOnSheet(
      {Kind::Symbol, drawingFile, protocolId, connection, PlaceSymbol(metric, namePrefix, 1)});
}

int InsertFormat(const char* drawingFile, const char* protocolId, const char* connection,
                 int metric, const char* namePrefix, double scale) {
  return InsertOnSheet(
      {Kind::Format, drawingFile, protocolId, connection, PlaceSymbol(metric, namePrefix, scale)});
}

int ChangeFormat(const char* drawingFile, const char* protocolId, const char* connection,
                 int metric, const char* namePrefix, double scale) {
  return ChangeOnSheet(
      {Kind::Format, drawingFile, protocolId, connection, PlaceSymbol(metric, namePrefix, scale)});
}

int CreateDxfFile(const char* fileName) {
  Board& board = TheAddin().board;
  const auto number = SheetNumber(board.previewed, TextOf(fileName));
  const std::string text =
      OutlinesToDxf(number ? DrawSheet(board.Current(), board.Geometry(), *number)
                           : DrawDocument(board.Current(), board.Geometry()));
  if (!WriteWholeFile(TextOf(fileName), text)) {
    throw BoardError("Cannot write \"" + TextOf(fileName) + "\"");
  }
  return 1;
}

int CreatePreview(char* fileName) {
  Board& board = TheAddin().board;
  const std::string begin = TextOf(fileName);
  if (begin.empty()) throw BoardError("A picture needs a file name");
  const std::string path = begin + ".svg";
  const std::string text = OutlinesToSvg(DrawDocument(board.Current(), board.Geometry()));
  if (!WriteWholeFile(path, text)) throw BoardError("Cannot write \"" + path + "\"");
  GiveText(path, fileName, begin.size() + kPreviewRoom + 1);
  board.previewed = begin;
  return 1;
}

}  // namespace driver
}  // namespace drawboard
