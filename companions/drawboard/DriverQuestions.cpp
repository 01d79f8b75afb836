// The CAD's window, questions to its user, and what is exchanged with other programs as files.
#include <algorithm>

#include "drawboard/BoardError.h"
#include "drawboard/DocumentJson.h"
#include "drawboard/DriveFiles.h"
#include "drawboard/Driver.h"
#include "drawboard/Folders.h"
#include "platform/System.h"

namespace drawboard {
namespace {

// Paths that come back through a buffer whose size nobody states.
constexpr std::size_t kSystemPathCapacity = 260;
constexpr std::size_t kWizardNameCapacity = 10000;

Board& TheBoard() { return TheAddin().board; }

int GiveWindow(QmWindow* window) {
  if (window == nullptr) throw BoardError("The caller gave no place for the window");
  *window = TheAddin().window.Handle();
  if (*window == 0) throw BoardError("The main window could not be made");
  return 1;
}

}  // namespace

namespace driver {

int GetMainHwnd(QmWindow* window) { return GiveWindow(window); }

int GetMainHwndForActivation(QmWindow* window) { return GiveWindow(window); }

int ShowFileDialog(int, const char*, int, const char*, const char*, char* path, int size) {
  auto& answers = TheBoard().answers.files;
  if (answers.empty()) return 0;
  const std::string chosen = answers.front();
  answers.pop_front();
  GiveText(chosen, path, static_cast<std::size_t>(std::max(size, 0)));
  return 1;
}

int GetPoint(double* x, double* y, int* third) {
  auto& answers = TheBoard().answers.points;
  if (answers.empty()) return 0;
  const Answers::PickedPoint picked = answers.front();
  answers.pop_front();
  if (x != nullptr) *x = picked.x;
  if (y != nullptr) *y = picked.y;
  if (third != nullptr) *third = picked.third;
  return 1;
}

// The designer is asked; what he measures comes back through the module.
int StartMeasure(const char* unit) {
  TheBoard().messages.push_back("Measure a length in " + TextOf(unit));
  return 1;
}

int GetFilesData(const char* fileName, int kind) {
  const std::string path = TextOf(fileName);
  auto contents = ReadWholeFile(path);
  if (!contents) throw BoardError("Cannot read \"" + path + "\"");
  TheBoard().Change([&](Document& next, FileChanges&) {
    next.exchangedFiles.push_back({path, kind, std::move(*contents)});
  });
  return 1;
}

// The wizard works on the selected object: its parameters and its name.
int GetDataWD(char* text, int* size, char* second) {
  ListBuffer answer(text, size);
  const BoardObject* object = TheBoard().Selected();
  if (object == nullptr) throw BoardError("Nothing is selected for the wizard");
  GiveText(object->name, second, kWizardNameCapacity);
  return answer.Give(FormatList(object->parameters));
}

int StopWD() {
  TheBoard().messages.push_back("The wizard has ended");
  return 1;
}

int ChangeOptionsSetting() { return 1; }

// Writes the data of a part, the only model format that needs no solid modeller.
int ExportModelFile(const char* protocolId, const char* format, char* filePath, int) {
  using quillmar::platform::EqualsNoCase;
  const std::string wanted = TextOf(format);
  if (!wanted.empty() && !EqualsNoCase(wanted, "dbp")) {
    throw BoardError("The model format \"" + wanted + "\" is not written");
  }
  const Document& document = TheBoard().Current();
  const BoardObject& object = TheBoard().Require(TextOf(protocolId));
  const std::string path = document.folders.workspace + "\\Export\\" + object.name + ".dbp";
  GiveText(path, filePath, kSystemPathCapacity);
  if (!WriteWholeFile(path, PartToJson(object, document, TheBoard().Geometry()))) {
    throw BoardError("Cannot write \"" + path + "\"");
  }
  return 1;
}

int IsInchUserPart(const char* modelId, int* inch) {
  if (inch == nullptr) throw BoardError("The caller gave no place for the answer");
  TheBoard().Require(TextOf(modelId));
  *inch = TheBoard().Current().unit == Unit::Inch ? 1 : 0;
  return 1;
}

}  // namespace driver
}  // namespace drawboard
