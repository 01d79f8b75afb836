// The CAD behind the add-in's functions: the open document, what is selected, what the designer
// will answer to questions, and the messages that the CAD has for him.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawboard/Document.h"
#include "drawboard/PartFiles.h"

namespace drawboard {

// What the designer answers when he is asked next; without an answer he cancels.
struct Answers {
  std::deque<std::string> files;
  struct PickedPoint {
    double x = 0, y = 0;
    int third = 0;
  };
  std::deque<PickedPoint> points;
};

// Changes one object of a document that is about to be written; writes files through the last
// argument only.
using ObjectChange = std::function<void(BoardObject&, Document&, FileChanges&)>;

// Told before the files of a part or of the assembly are made: how many were made of how many, and
// the name of what comes. False ends the saving.
using SaveWatcher =
    std::function<bool(std::size_t made, std::size_t count, const std::string& name)>;

class Board {
 public:
  // `folder` holds the installation: documents and the folders behind the markers lie in it.
  Board(std::string folder, std::unique_ptr<Kernel> kernel);

  // A new, empty document, written at once. `path` is a full path, or a name for a document of
  // the installation.
  void NewDocument(const std::string& path, Unit unit);
  // A part whose model file cannot be read any more has no body; a line of the messages says why.
  void OpenDocument(const std::string& path);
  // Writes the open document under another path, which it keeps; empty: under its own. Brings the
  // exchange files of its parts and of the assembly up to date. They are made here and not at each
  // change: hidden lines and STEP text cost many times what an insert costs, and a part is changed
  // several times before somebody looks at it. Without solids a part's picture is its outlines. A
  // part that has no body is left out; a line of the messages says why. Throws a BoardError when
  // the watcher ends it: the document and the files that were made until then are whole.
  void SaveDocument(const std::string& path);
  // Where one of the markers "ASM", "WORKSPACE", "LIB", "CONTENTLIB" leads.
  void SetFolder(const std::string& marker, const std::string& folder);

  const Document& Current();
  const Kernel& Geometry() const { return *kernel; }

  // Runs `change` on a copy of the document, writes the copy and makes it the current one. When
  // anything fails, a BoardError leaves and document and files are as before.
  void Change(const std::function<void(Document&, FileChanges&)>& change);

  // Adds an object and its file. Its name is made from the file's, else from its kind.
  // `finish`, when given, completes the named object, which already stands in the document.
  void Insert(BoardObject object, const std::string& givenPath, const ObjectChange& finish = {});
  // The identifier of the objects that a change with this connection text means: the protocol's own
  // or, when no object bears it yet, that of the protocol which it replaces.
  std::string BearerOf(const std::string& protocolId, const std::string& connection);
  // Changes every object of that protocol identifier and writes their files.
  void ChangeObjects(const std::string& protocolId, const std::string& givenPath,
                     const ObjectChange& change);

  // The object of that name or identifier. Throws a BoardError when there is none.
  const BoardObject& Require(const std::string& key);

  void Select(const std::string& name);
  const BoardObject* Selected();

  // Views of a calculation that are inserted until EndViews belong to it.
  void BeginViews(const std::string& protocolId);
  bool EndViews();
  // Nested; false when no group is open.
  void BeginGroup() { ++openGroups; }
  bool EndGroup();

  Answers answers;
  SaveWatcher saveWatcher;  // may be empty
  std::vector<std::string> messages;
  std::string previewed;  // path that the last preview was begun with

 private:
  std::string DocumentPath(const std::string& path) const;
  void StoreWithHost(Document& next, BoardObject& object, const std::string& givenPath,
                     FileChanges& files);
  void ExportParts(const Document& saved);
  void ExportPart(const BoardObject& object, const Document& saved);
  void TellWatcher(std::size_t made, std::size_t count, const std::string& name);
  void ExportAssembly(const Document& saved);
  void ReportProblem(const std::function<void()>& step);
  const std::string& ExtensionFor(Kind kind) const;

  std::string folder;
  std::unique_ptr<Kernel> kernel;
  std::optional<Document> document;
  // What the exchange files of a part file show that this process wrote.
  std::map<std::string, PartDescription> exported;
  std::string selected;
  std::optional<std::string> openViews;
  int openGroups = 0;
};

// Makes a connection text the object's own. The identifier in front of it is from then on the
// object's; the one it had is remembered.
void Connect(BoardObject& object, const std::string& connection);

}  // namespace drawboard
