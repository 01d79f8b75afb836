// The files that objects of a document bear, and changes of files that are taken back when the
// operation they belong to fails.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drawboard/Document.h"

namespace drawboard {

// Files written and removed by one operation. What was there before comes back when the object
// is destroyed without Keep.
class FileChanges {
 public:
  FileChanges() = default;
  FileChanges(const FileChanges&) = delete;
  FileChanges& operator=(const FileChanges&) = delete;
  ~FileChanges();

  // Throws a BoardError when the file cannot be written.
  void Write(const std::string& path, const std::string& contents);
  void Remove(const std::string& path);
  void Keep() { before.clear(); }

 private:
  struct Former {
    std::string path;
    std::optional<std::string> contents;
  };
  std::vector<Former> before;
};

// Gives `object`, which belongs to `document`, its file: the path as given is resolved and the
// part file written. An empty path keeps the file that the object has; a part without any gets
// one that bears its name. Throws a BoardError when its dimensions make no body, when another
// object with other data bears the file or when a file lies there that this CAD did not write.
void StorePart(Document& document, BoardObject& object, const std::string& givenPath,
               const std::string& extension, const Kernel& kernel, FileChanges& files);

// A shared part may stand in the library itself, then no copy of it is made.
bool IsLibraryFile(const BoardObject& object);

// Path of a part's exchange file: that of its part file with another extension.
std::string ExchangePath(const std::string& file, const std::string& extension);

// Writes the exchange files that there are. Throws a BoardError when one cannot be written.
void WriteExchangeFiles(const std::string& file, const ExchangeFiles& contents);

// True when another object of the document bears the file.
bool IsBorneByOther(const Document& document, const BoardObject& object, const std::string& file);

}  // namespace drawboard
