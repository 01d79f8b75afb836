// Steps that put something on the sheet: drawings of parts, and sheet formats.
#include <fmt/format.h>

#include "drawboard/CodePage.h"
#include "platform/Files.h"
#include "session/Session.h"

namespace session {
namespace {

using drawboard::ToUtf8;

constexpr const char* kFormatDataFile = "xformats";
constexpr const char* kFormatScale = "xxScale";
constexpr std::size_t kTextSize = 260;
constexpr int kFirstRoom = 1 << 20;

}  // namespace

// What Create2dPart gives. The file and the pairs are the add-in's to free.
struct Session::Sheet {
  char protocolId[kTextSize] = {};
  std::string connection = std::string(kFirstRoom, '\0');
  char file[kTextSize] = {};
  int metric = 0;
  double x = 0, y = 0, level = 0;
  ExtDataPair* pairs = nullptr;
  int count = 0;
};

Session::Sheet Session::MakeDrawing(const std::string& protocolId) {
  Sheet sheet;
  int room = static_cast<int>(sheet.connection.size());
  const auto ask = [&] {
    return module->call.Create2dPart(protocolId.c_str(), sheet.protocolId, sheet.connection.data(),
                                     &room, sheet.file, &sheet.metric, &sheet.x, &sheet.y,
                                     &sheet.level, &sheet.pairs, &sheet.count, 0);
  };
  int result = Call("Create2dPart", fmt::format("\"{}\"", protocolId), ask);
  if (result == 0 && room > static_cast<int>(sheet.connection.size())) {
    sheet.connection.resize(static_cast<std::size_t>(room));
    result = Call("Create2dPart", fmt::format("\"{}\"", protocolId), ask);
  }
  Require(result, "Create2dPart failed: the calculation host cannot draw the part");
  return sheet;
}

// A drawing that stands keeps its identity and gets the new file.
void Session::PlaceDrawing(Sheet& sheet, const std::string& standing) {
  const DocumentJson document = Document();
  const std::string id = standing.empty() ? sheet.protocolId : ProtocolOf(document, standing);
  const std::string connection = standing.empty()
                                     ? std::string(sheet.connection.c_str())
                                     : *drawboard::FromUtf8(ConnectionOf(document, standing));
  const auto place = standing.empty() ? cad.sheet.Insert2dPart : cad.sheet.Change2dPart;
  const int placed = place(sheet.file, id.c_str(), connection.c_str(), sheet.metric, sheet.pairs,
                           sheet.count, sheet.x, sheet.y, sheet.level);
  module->call.DeleteBomInfo(sheet.pairs, sheet.count);
  quillmar::platform::RemoveFile(sheet.file);
  Require(placed, "The CAD cannot place the drawing");
}

void Session::Perform(const Drawing& drawing) {
  const std::string source = started[drawing.of].objects.front();
  Obtain(source);
  const DocumentJson before = Document();
  Sheet sheet = MakeDrawing(ProtocolOf(before, source));
  const Names standing = Standing(drawing.objects);
  PlaceDrawing(sheet, standing.empty() ? std::string() : standing.front());
  const Names objects = standing.empty() ? NewObjects(before) : standing;
  Done(fmt::format("\"{}\" is drawn {}from \"{}\"; on the sheet stands {}", ToUtf8(drawing.name),
                   standing.empty() ? "" : "anew ", source, ListOf(objects)));
  Leave({}, objects, standing.empty());
}

// The picture is no part's drawing: it has a protocol of its own, by which it can be replaced.
Session::Sheet Session::MakePicture(const std::string& protocolId, const std::string& name,
                                    bool isNew) {
  Sheet sheet;
  sheet.metric = job.unit == "mm" ? 1 : 0;
  Require(Call("MakePicture", fmt::format("\"{}\"", protocolId),
               [&] { return module->call.MakePicture(protocolId.c_str(), sheet.file); }),
          "MakePicture failed: the calculation host cannot draw the part");
  if (!isNew) return sheet;
  Require(Call("CreateUserProtocol", fmt::format("\"{}\"", ToUtf8(name)),
               [&] {
                 return module->call.CreateUserProtocol(sheet.protocolId, sheet.connection.data(),
                                                        name.c_str());
               }),
          "CreateUserProtocol failed");
  return sheet;
}

void Session::Perform(const Picture& picture) {
  const std::string source = started[picture.of].objects.front();
  const Names standing = Standing(picture.objects);
  Obtain(source);
  const DocumentJson before = Document();
  Sheet sheet = MakePicture(ProtocolOf(before, source), picture.name, standing.empty());
  PlaceDrawing(sheet, standing.empty() ? std::string() : standing.front());
  const Names objects = standing.empty() ? NewObjects(before) : standing;
  Done(fmt::format("\"{}\" is a picture of \"{}\"; on the sheet stands {}", ToUtf8(picture.name),
                   source, ListOf(objects)));
  Leave({}, objects, standing.empty());
}

void Session::Perform(const Format& format) {
  if (const Names standing = Standing(format.objects); !standing.empty()) {
    return Recalculate(kFormatDataFile, standing, {{kFormatScale, fmt::format("{}", format.scale)}},
                       format.standard);
  }
  const std::string order = Order(kFormatDataFile, {}, {});
  Require(Call("ShowFormat", fmt::format("\"{}\", {}", ToUtf8(format.standard), format.scale),
               [&] { return module->call.ShowFormat(format.standard.c_str(), format.scale); }),
          "ShowFormat failed");
  AwaitParts(kFormatDataFile, order);
}

}  // namespace session
