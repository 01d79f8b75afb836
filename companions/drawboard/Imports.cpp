#include "drawboard/Imports.h"

#include "drawboard/BoardError.h"
#include "drawboard/DriveFiles.h"
#include "drawboard/FacetBody.h"
#include "drawboard/Folders.h"
#include "platform/Files.h"
#include "platform/System.h"

namespace drawboard {
namespace {

std::string FreePath(const std::string& stem, const std::string& extension) {
  std::string path = stem + extension;
  for (int number = 2; quillmar::platform::FileExists(path); ++number) {
    path = stem + " (" + std::to_string(number) + ")" + extension;
  }
  return path;
}

}  // namespace

void ImportFile(const Document& document, const std::string& objectName, const std::string& source,
                std::string& copy, FileChanges& files) {
  if (source.empty()) return;
  const auto contents = ReadWholeFile(source);
  if (!contents) throw BoardError("Cannot read \"" + source + "\"");
  if (copy.empty()) {
    copy = FreePath(document.folders.assembly + "\\" + objectName, ExtensionOf(source));
  }
  files.Write(copy, *contents);
}

std::shared_ptr<const FacetBody> ReadModelFile(const std::string& path) {
  const std::string extension = quillmar::platform::LowerCase(ExtensionOf(path));
  if (extension != ".c3d" && extension != ".c3p") return nullptr;
  const auto contents = ReadWholeFile(path);
  if (!contents) throw BoardError("Cannot read \"" + path + "\"");
  try {
    return std::make_shared<FacetBody>(*contents);
  } catch (const BoardError& error) {
    throw BoardError(std::string(error.what()) + " (\"" + path + "\")");
  }
}

}  // namespace drawboard
