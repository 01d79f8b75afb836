// 2D: drawings, symbols, formats, and the files that the CAD draws of its document.
#include <cmath>

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
  const std::string text = OutlinesToDxf(DrawDocument(board.Current(), board.Geometry()));
  if (!WriteWholeFile(TextOf(fileName), text)) {
    throw BoardError("Cannot write \"" + TextOf(fileName) + "\"");
  }
  return 1;
}

int CreatePreview(char* fileName) {
  Board& board = TheAddin().board;
  const std::string begin = TextOf(fileName);
  const std::string path = begin + ".svg";
  const std::string text = OutlinesToSvg(DrawDocument(board.Current(), board.Geometry()));
  if (!WriteWholeFile(path, text)) throw BoardError("Cannot write \"" + path + "\"");
  GiveText(path, fileName, begin.size() + kPreviewRoom + 1);
  return 1;
}

}  // namespace driver
}  // namespace drawboard
