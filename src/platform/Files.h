// Files of the machine, by Windows path. Names match without regard to case.
#pragma once

#include <string>

namespace quillmar::platform {

// True for an existing file or folder.
bool FileExists(const std::string& path);

// True when the file is gone afterwards because this call removed it.
bool RemoveFile(const std::string& path);

// The short (8.3) form of an existing path; the path itself when it has none or does not exist.
std::string ShortPathName(const std::string& path);

}  // namespace quillmar::platform
