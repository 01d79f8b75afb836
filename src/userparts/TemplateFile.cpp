#include "userparts/TemplateFile.h"

#include <algorithm>

#include "platform/Files.h"
#include "platform/Profile.h"

namespace quillmar {

void TemplateFile::Remove() const { platform::RemoveFile(path); }

// An entry is one line: behind a line break the reader would find entries that nobody has put.
bool TemplateFile::Put(const char* section, const std::string& key, std::string value) const {
  const auto breaks = [](char character) { return character == '\r' || character == '\n'; };
  std::replace_if(value.begin(), value.end(), breaks, ' ');
  return platform::WriteProfileText(path, section, key.c_str(), value.c_str());
}

}  // namespace quillmar
