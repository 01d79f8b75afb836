// Characters that file names may hold, and folders that names are appended to.
#pragma once

#include <string>

namespace quillmar {

// Replaces what a file name must not hold by "_" and the accented letters of Windows-1250 that
// the suite uses by plain ones. The dot stays.
void MakeSafeFileName(std::string& text);

// Appends a backslash unless the last character is one; an empty folder becomes "\".
void EnsureTrailingBackslash(std::string& folder);

}  // namespace quillmar
