// The document of the CAD: the objects that stand in the model and the assembly that they form.
// Plain data; texts are bytes in the code page.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawboard/Kernel.h"
#include "drawboard/ListText.h"

namespace drawboard {

// Kinds of objects, with the words that name them in the document (KindWord).
enum class Kind {
  Part,
  ParamPart,
  Shaft,
  Feature,
  Cam,
  Calculation,
  Assembly,
  NamedProtocol,
  Drawing,
  Symbol,
  Format
};
const char* KindWord(Kind kind);
std::optional<Kind> KindFromWord(const std::string& word);

struct Configurations {
  std::string active;
  std::vector<std::string> names;
};

// Where a drawing, symbol or format stands on its sheet.
struct Placement {
  std::string drawingFile;  // the copy that belongs to the document
  bool metric = true;
  double x = 0, y = 0, level = 0;
  std::string namePrefix;
  double scale = 1;
};

struct BoardObject {
  std::string name;  // unique in the document, without regard to case
  Kind kind = Kind::Part;
  std::string protocolId;
  // Identifiers that the object bore before its connection named another one.
  std::vector<std::string> formerIds;
  std::string connection;
  std::string caption;
  bool local = true;
  std::string modelPath;  // library model or imported file
  std::string filePath;   // as given, with its marker
  std::string file;       // resolved; empty when the object has no file
  std::string view;       // view key of the calculation
  std::string viewOf;     // identifier of the calculation whose view this is; empty for others
  std::string featureOf;  // name of the part that a feature belongs to, empty when unknown
  bool visible = true;
  int changes = 0;
  NamedTexts parameters;
  // Names of the parameters that the CAD added: those of the library model and the designer's.
  std::vector<std::string> cadParameters;
  NamedTexts extendedData;
  NamedTexts featureStates;
  Configurations configurations;
  std::optional<Profile> profile;
  // What the imported file holds, read from it; null when it is no model file.
  std::shared_ptr<const FacetBody> facets;
  std::optional<Placement> placement;
};

// Folders behind the markers of file paths, without a trailing backslash.
struct MarkedFolders {
  std::string assembly;
  std::string workspace;
  std::string library;
  std::string contentLibrary;
};

// What came in through GetFilesData.
struct ExchangedFile {
  std::string path;
  int kind = 0;
  std::string contents;
};

class Document {
 public:
  std::string path;  // of the JSON file; the assembly bears its name
  Unit unit = Unit::Millimetre;
  MarkedFolders folders;
  std::deque<BoardObject> objects;
  std::vector<ExchangedFile> exchangedFiles;

  std::string Name() const;

  // The object of that protocol identifier, object name or former identifier, tried in this
  // order; the newest of several. Null when there is none.
  BoardObject* Find(const std::string& key);
  const BoardObject* Find(const std::string& key) const;
  // Every object that a change under this identifier reaches: all instances of one calculation.
  std::vector<BoardObject*> FindAll(const std::string& protocolId);
  BoardObject* FindName(const std::string& name);
  // The assembly's own object, null when no assembly protocol is connected.
  const BoardObject* AssemblyObject() const;

  // A name that no object bears, made from a wish.
  std::string FreeName(const std::string& wish) const;
};

}  // namespace drawboard
