// The description of a user part that the data wizard completes: an ini file with the extension
// "tmu" in the temporary folder.
#pragma once

#include <string>

namespace quillmar {

class TemplateFile {
 public:
  // Nothing is written yet.
  explicit TemplateFile(std::string path) : path(std::move(path)) {}

  const std::string& Path() const { return path; }
  void Remove() const;
  // Line breaks in the value become blanks. False when the file cannot be written.
  bool Put(const char* section, const std::string& key, std::string value) const;

 private:
  std::string path;
};

}  // namespace quillmar
