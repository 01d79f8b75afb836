#include "drawboard/Board.h"

#include "drawboard/BoardError.h"
#include "drawboard/CodePage.h"
#include "drawboard/DocumentJson.h"
#include "drawboard/DriveFiles.h"
#include "drawboard/Folders.h"
#include "drawboard/Imports.h"
#include "drawboard/Outline.h"
#include "keelcomm/BufferItems.h"
#include "platform/Files.h"
#include "platform/System.h"

namespace drawboard {
namespace {

constexpr const char* kDocumentExtension = ".json";
// Calls that come before a document was opened work in this one. It starts empty.
constexpr const char* kScratchName = "Untitled";

// What the module writes into a protocol that replaces another one.
constexpr const char* kCadSection = "Cadx";
constexpr const char* kReplacedProtocol = "OldPartPID";
constexpr std::string_view kReferenceMarker = "<@PID>";
constexpr std::string_view kItemEnd = "<@EL>";

const std::string kPartExtension = "dbp";
const std::string kFeatureExtension = "dbf";

void WriteDocument(const Document& document, const Kernel& kernel) {
  if (!WriteWholeFile(document.path, DocumentToJson(document, kernel))) {
    throw BoardError("Cannot write the document \"" + document.path + "\"");
  }
}

// Of a part that the kernel makes no files of.
ExchangeFiles PictureOf(const Outlines& outlines) {
  return outlines.empty() ? ExchangeFiles() : ExchangeFiles{{}, {}, OutlinesToSvg(outlines)};
}

// Empty when the connection text does not say, as with a store whose texts are not to be read.
std::string ReplacedProtocolOf(std::string_view connection) {
  const auto marker = connection.find(kReferenceMarker);
  if (marker == std::string_view::npos) return {};
  connection.remove_prefix(marker + kReferenceMarker.size());
  std::vector<std::string_view> items;
  for (auto end = connection.find(kItemEnd); end != std::string_view::npos;
       end = connection.find(kItemEnd)) {
    items.push_back(connection.substr(0, end));
    connection.remove_prefix(end + kItemEnd.size());
  }
  const auto record = quillmar::keelcomm::RecordFromItems(items);
  const auto* replaced = record ? record->Find(kCadSection, kReplacedProtocol) : nullptr;
  return replaced != nullptr ? replaced->value : std::string();
}

}  // namespace

void Connect(BoardObject& object, const std::string& connection) {
  object.connection = connection;
  const std::string id = IdentifierOf(connection);
  if (id.empty() || id == object.protocolId) return;
  if (!object.protocolId.empty()) object.formerIds.push_back(object.protocolId);
  object.protocolId = id;
}

Board::Board(std::string folder, std::unique_ptr<Kernel> kernel)
    : folder(std::move(folder)), kernel(std::move(kernel)) {}

std::string Board::DocumentPath(const std::string& path) const {
  if (path.empty()) throw BoardError("A document needs a name");
  if (path.find_first_of("\\/:") != std::string::npos) return path;
  const std::string name = ExtensionOf(path).empty() ? path + kDocumentExtension : path;
  return folder + "\\Document\\" + name;
}

void Board::NewDocument(const std::string& path, Unit unit) {
  Document fresh;
  fresh.path = DocumentPath(path);
  fresh.unit = unit;
  fresh.folders = DefaultFolders(fresh.path, folder);
  WriteDocument(fresh, *kernel);
  document = std::move(fresh);
  selected.clear();
  openViews.reset();
  openGroups = 0;
}

void Board::OpenDocument(const std::string& path) {
  const std::string full = DocumentPath(path);
  const auto text = ReadWholeFile(full);
  if (!text) throw BoardError("Cannot read the document \"" + full + "\"");
  Document read = DocumentFromJson(*text);
  read.path = full;
  for (BoardObject& object : read.objects) {
    if (object.kind != Kind::Part) continue;
    ReportProblem([&] { object.facets = ReadModelFile(object.modelPath); });
  }
  document = std::move(read);
  selected.clear();
}

void Board::SaveDocument(const std::string& path) {
  Document saved = Current();
  if (!path.empty()) saved.path = DocumentPath(path);
  WriteDocument(saved, *kernel);
  document = saved;
  ExportParts(saved);
  ExportAssembly(saved);
}

void Board::TellWatcher(std::size_t made, std::size_t count, const std::string& name) {
  if (saveWatcher && !saveWatcher(made, count, name)) throw BoardError("The saving was ended");
}

// What cannot be shown to others is no reason to lose the document.
void Board::ReportProblem(const std::function<void()>& step) {
  try {
    step();
  } catch (const BoardError& error) {
    messages.push_back(error.what());
  }
}

// The assembly counts as one more.
void Board::ExportParts(const Document& saved) {
  std::vector<const BoardObject*> parts;
  for (const BoardObject& object : saved.objects) {
    if (!object.file.empty() && !IsLibraryFile(object)) parts.push_back(&object);
  }
  for (std::size_t i = 0; i < parts.size(); ++i) {
    TellWatcher(i, parts.size() + 1, parts[i]->name);
    ExportPart(*parts[i], saved);
  }
  TellWatcher(parts.size(), parts.size() + 1, saved.Name());
}

void Board::ExportPart(const BoardObject& object, const Document& saved) {
  const PartDescription part = DescribePart(object, saved);
  const std::string key = quillmar::platform::LowerCase(object.file);
  const auto known = exported.find(key);
  const bool present = quillmar::platform::FileExists(ExchangePath(object.file, ".step"));
  if (known != exported.end() && known->second == part && present) return;
  ReportProblem([&] {
    const auto files = kernel->Export(part, ToUtf8(StemOf(object.file)));
    WriteExchangeFiles(object.file, files ? *files : PictureOf(kernel->Draw(part)));
    exported.insert_or_assign(key, part);
  });
}

void Board::ExportAssembly(const Document& saved) {
  std::vector<Instance> instances;
  for (const BoardObject& object : saved.objects) {
    if (!object.visible || object.file.empty()) continue;
    instances.push_back(
        {ToUtf8(StemOf(object.file)), ToUtf8(object.name), DescribePart(object, saved)});
  }
  ReportProblem([&] {
    if (const auto files = kernel->ExportAssembly(instances, ToUtf8(saved.Name()))) {
      WriteExchangeFiles(saved.path, *files);
    }
  });
}

void Board::SetFolder(const std::string& marker, const std::string& target) {
  Change([&](Document& next, FileChanges&) {
    if (marker == "ASM") {
      next.folders.assembly = target;
    } else if (marker == "WORKSPACE") {
      next.folders.workspace = target;
    } else if (marker == "LIB") {
      next.folders.library = target;
    } else if (marker == "CONTENTLIB") {
      next.folders.contentLibrary = target;
    } else {
      throw BoardError("There is no folder marker \"" + marker + "\"");
    }
  });
}

const Document& Board::Current() {
  if (!document) NewDocument(kScratchName, Unit::Millimetre);
  return *document;
}

void Board::Change(const std::function<void(Document&, FileChanges&)>& change) {
  Document next = Current();
  FileChanges files;
  change(next, files);
  WriteDocument(next, *kernel);
  files.Keep();
  document = std::move(next);
}

const std::string& Board::ExtensionFor(Kind kind) const {
  return kind == Kind::Feature ? kFeatureExtension : kPartExtension;
}

// A feature changes the body that it stands on: that one's file is written too.
void Board::StoreWithHost(Document& next, BoardObject& object, const std::string& givenPath,
                          FileChanges& files) {
  StorePart(next, object, givenPath, ExtensionFor(object.kind), *kernel, files);
  if (object.featureOf.empty()) return;
  BoardObject* host = next.FindName(object.featureOf);
  if (host != nullptr && host != &object && !host->file.empty()) {
    StorePart(next, *host, {}, ExtensionFor(host->kind), *kernel, files);
  }
}

void Board::Insert(BoardObject object, const std::string& givenPath, const ObjectChange& finish) {
  Change([&](Document& next, FileChanges& files) {
    const std::string stem = StemOf(givenPath);
    object.name = next.FreeName(stem.empty() ? KindWord(object.kind) : stem);
    Connect(object, std::string(object.connection));
    if (openViews && object.protocolId != *openViews) object.viewOf = *openViews;
    BoardObject& placed = next.objects.emplace_back(std::move(object));
    if (finish) finish(placed, next, files);
    StoreWithHost(next, placed, givenPath, files);
  });
}

std::string Board::BearerOf(const std::string& protocolId, const std::string& connection) {
  if (Current().Find(protocolId) != nullptr) return protocolId;
  const std::string replaced = ReplacedProtocolOf(connection);
  return replaced.empty() ? protocolId : replaced;
}

void Board::ChangeObjects(const std::string& protocolId, const std::string& givenPath,
                          const ObjectChange& change) {
  Change([&](Document& next, FileChanges& files) {
    const std::vector<BoardObject*> objects = next.FindAll(protocolId);
    if (objects.empty()) {
      throw BoardError("No object of the document has the protocol \"" + protocolId + "\"");
    }
    for (BoardObject* object : objects) {
      change(*object, next, files);
      ++object->changes;
    }
    // After all of them are changed, so that instances of one part find each other equal.
    for (BoardObject* object : objects) {
      StoreWithHost(next, *object, givenPath, files);
    }
  });
}

const BoardObject& Board::Require(const std::string& key) {
  const BoardObject* object = Current().Find(key);
  if (object == nullptr) throw BoardError("The document has no object \"" + key + "\"");
  return *object;
}

void Board::Select(const std::string& name) {
  selected = name.empty() ? std::string() : Require(name).name;
}

const BoardObject* Board::Selected() {
  return selected.empty() ? nullptr : Current().Find(selected);
}

void Board::BeginViews(const std::string& protocolId) { openViews = protocolId; }

bool Board::EndViews() {
  const bool open = openViews.has_value();
  openViews.reset();
  return open;
}

bool Board::EndGroup() {
  if (openGroups == 0) return false;
  --openGroups;
  return true;
}

}  // namespace drawboard
