#include "userparts/TemplateFile.h"

#include "platform/Files.h"
#include "platform/Profile.h"

namespace quillmar {

void TemplateFile::Remove() const { platform::RemoveFile(path); }

bool TemplateFile::Put(const char* section, const std::string& key,
                       const std::string& value) const {
  return platform::WriteProfileText(path, section, key.c_str(), value.c_str());
}

}  // namespace quillmar
