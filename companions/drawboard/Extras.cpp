// What the program that plays the CAD's user calls.
#include <algorithm>

#include "drawboard/BoardError.h"
#include "drawboard/DocumentJson.h"
#include "drawboard/Drawboard.h"
#include "drawboard/Driver.h"

namespace drawboard::extras {
namespace {

Board& TheBoard() { return TheAddin().board; }

Unit UnitOf(const std::string& word) {
  if (word == "mm") return Unit::Millimetre;
  if (word == "in") return Unit::Inch;
  throw BoardError("The unit \"" + word + "\" is neither \"mm\" nor \"in\"");
}

}  // namespace

int Drawboard_NewDocument(const char* path, const char* unit) {
  TheBoard().NewDocument(TextOf(path), UnitOf(TextOf(unit)));
  return 1;
}

int Drawboard_OpenDocument(const char* path) {
  TheBoard().OpenDocument(TextOf(path));
  return 1;
}

int Drawboard_SaveDocument(const char* path) {
  TheBoard().SaveDocument(TextOf(path));
  return 1;
}

int Drawboard_WatchSaving(DrawboardSaveWatcher watcher, void* context) {
  SaveWatcher& watching = TheBoard().saveWatcher;
  watching = nullptr;
  if (watcher == nullptr) return 1;
  watching = [watcher, context](std::size_t made, std::size_t count, const std::string& name) {
    return watcher(context, static_cast<int>(made), static_cast<int>(count), name.c_str()) != 0;
  };
  return 1;
}

int Drawboard_SetFolder(const char* marker, const char* folder) {
  TheBoard().SetFolder(TextOf(marker), TextOf(folder));
  return 1;
}

int Drawboard_Select(const char* name) {
  TheBoard().Select(TextOf(name));
  return 1;
}

int Drawboard_Place(const char* kind, const char* name, const char* connection) {
  const auto known = KindFromWord(TextOf(kind));
  if (!known) throw BoardError("There is no kind of objects \"" + TextOf(kind) + "\"");
  BoardObject object;
  object.kind = *known;
  object.connection = TextOf(connection);
  object.caption = TextOf(name);
  TheBoard().Insert(std::move(object), {}, [&](BoardObject& placed, Document& next, FileChanges&) {
    placed.name.clear();
    placed.name = next.FreeName(placed.caption.empty() ? KindWord(placed.kind) : placed.caption);
  });
  return 1;
}

int Drawboard_SetParameter(const char* object, const char* parameter, const char* value) {
  const std::string id = TheBoard().Require(TextOf(object)).protocolId;
  const std::string name = TextOf(parameter);
  TheBoard().ChangeObjects(id, {}, [&](BoardObject& changed, Document&, FileChanges&) {
    if (FindText(changed.parameters, name) == nullptr) AddName(changed.cadParameters, name);
    PutText(changed.parameters, name, TextOf(value));
  });
  return 1;
}

int Drawboard_AnswerFile(const char* path) {
  TheBoard().answers.files.push_back(TextOf(path));
  return 1;
}

int Drawboard_AnswerPoint(double x, double y, int third) {
  TheBoard().answers.points.push_back({x, y, third});
  return 1;
}

int Drawboard_GetDocument(char* text, int* size) {
  ListBuffer answer(text, size);
  return answer.Give(DocumentToJson(TheBoard().Current(), TheBoard().Geometry()));
}

int Drawboard_GetMessages(char* text, int* size) {
  ListBuffer answer(text, size);
  std::string lines;
  for (std::string line : TheBoard().messages) {
    std::replace(line.begin(), line.end(), '\n', ' ');
    lines += line + "\n";
  }
  return answer.Give(lines);
}

int Drawboard_ClearMessages() {
  TheBoard().messages.clear();
  return 1;
}

}  // namespace drawboard::extras
