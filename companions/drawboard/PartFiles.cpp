#include "drawboard/PartFiles.h"

#include <algorithm>
#include <utility>

#include "drawboard/BoardError.h"
#include "drawboard/DocumentJson.h"
#include "drawboard/DriveFiles.h"
#include "drawboard/Folders.h"
#include "platform/Files.h"
#include "platform/System.h"

namespace drawboard {
namespace {

using quillmar::platform::EqualsNoCase;

constexpr std::pair<const char*, std::string ExchangeFiles::*> kExchangeFiles[] = {
    {".step", &ExchangeFiles::step}, {".glb", &ExchangeFiles::glb}, {".svg", &ExchangeFiles::svg}};

// Kinds that a CAD cannot keep without a file of their own.
bool NeedsFile(Kind kind) {
  return kind == Kind::Part || kind == Kind::ParamPart || kind == Kind::Shaft ||
         kind == Kind::Feature || kind == Kind::Cam;
}

// The other object whose file would be overwritten with other data. Equal parts share a file.
const BoardObject* Clash(const Document& document, const BoardObject& object) {
  const auto found =
      std::find_if(document.objects.begin(), document.objects.end(), [&](const BoardObject& other) {
        return &other != &object && EqualsNoCase(other.file, object.file) &&
               !SamePart(other, object);
      });
  return found != document.objects.end() ? &*found : nullptr;
}

void CheckFree(const Document& document, const BoardObject& object) {
  if (const BoardObject* other = Clash(document, object)) {
    throw BoardError("The file \"" + object.file + "\" belongs to \"" + other->name + "\", \"" +
                     object.name + "\" must not overwrite it");
  }
  const auto present = ReadWholeFile(object.file);
  if (present ? !IsPartText(*present) : quillmar::platform::FileExists(object.file)) {
    throw BoardError("The file \"" + object.file + "\" was not written by this CAD, \"" +
                     object.name + "\" must not overwrite it");
  }
}

void ResolveFile(const Document& document, BoardObject& object, const std::string& givenPath,
                 const std::string& extension) {
  if (!givenPath.empty()) {
    object.filePath = givenPath;
    object.file = ResolvePath(givenPath, document.folders);
  } else if (object.file.empty() && NeedsFile(object.kind)) {
    object.filePath = "<ASM>\\" + object.name + "." + extension;
    object.file = ResolvePath(object.filePath, document.folders);
  }
}

}  // namespace

FileChanges::~FileChanges() {
  for (auto former = before.rbegin(); former != before.rend(); ++former) {
    if (former->contents) {
      WriteWholeFile(former->path, *former->contents);
    } else {
      quillmar::platform::RemoveFile(former->path);
    }
  }
}

void FileChanges::Write(const std::string& path, const std::string& contents) {
  auto former = ReadWholeFile(path);
  if (!WriteWholeFile(path, contents)) throw BoardError("Cannot write \"" + path + "\"");
  before.push_back({path, std::move(former)});
}

void FileChanges::Remove(const std::string& path) {
  auto former = ReadWholeFile(path);
  if (former && quillmar::platform::RemoveFile(path)) before.push_back({path, std::move(former)});
}

bool IsBorneByOther(const Document& document, const BoardObject& object, const std::string& file) {
  return std::any_of(document.objects.begin(), document.objects.end(),
                     [&](const BoardObject& other) {
                       return &other != &object && EqualsNoCase(other.file, file);
                     });
}

bool IsLibraryFile(const BoardObject& object) {
  return !object.file.empty() && EqualsNoCase(object.file, object.modelPath);
}

std::string ExchangePath(const std::string& file, const std::string& extension) {
  return file.substr(0, file.size() - ExtensionOf(file).size()) + extension;
}

void WriteExchangeFiles(const std::string& file, const ExchangeFiles& contents) {
  for (const auto& [extension, member] : kExchangeFiles) {
    const std::string& text = contents.*member;
    const std::string path = ExchangePath(file, extension);
    if (!text.empty() && !WriteWholeFile(path, text)) {
      throw BoardError("Cannot write \"" + path + "\"");
    }
  }
}

void StorePart(Document& document, BoardObject& object, const std::string& givenPath,
               const std::string& extension, const Kernel& kernel, FileChanges& files) {
  kernel.Check(DescribePart(object, document));
  const std::string former = object.file;
  ResolveFile(document, object, givenPath, extension);
  if (object.file.empty() || IsLibraryFile(object)) return;
  CheckFree(document, object);
  files.Write(object.file, PartToJson(object, document, kernel));
  const bool moved = !former.empty() && !EqualsNoCase(former, object.file);
  const bool orphan = moved && !IsBorneByOther(document, object, former);
  if (!orphan || EqualsNoCase(former, object.modelPath)) return;
  files.Remove(former);
  for (const auto& [extension, member] : kExchangeFiles) {
    files.Remove(ExchangePath(former, extension));
  }
}

}  // namespace drawboard
