#include "drawboard/Imports.h"

#include "drawboard/BoardError.h"
#include "drawboard/DriveFiles.h"
#include "drawboard/Folders.h"
#include "platform/Files.h"

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

}  // namespace drawboard
