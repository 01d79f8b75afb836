// Profile (ini) files: "[section]" headings and "key=value" lines. A file named without a folder
// lies in the Windows folder. What is observable is the behaviour of the Windows profile
// functions: names match without regard to case, the first of several equal sections or keys
// wins, one pair of quotes around a value is removed.
#pragma once

#include <cstddef>
#include <string>

namespace quillmar::platform {

// Writes the value of a key into `buffer` (size bytes, NUL included) and returns its length; the
// fallback, without trailing blanks, when there is none. With a null `key`: the section's keys,
// each closed by a NUL, and one NUL more. With a null `section`: the file's sections, in the same
// form. A value that does not fit is cut to size - 1 characters, a list to size - 2 with both
// NULs written. Size 0 writes nothing and returns 0.
std::size_t GetProfileText(const std::string& file, const char* section, const char* key,
                           const char* fallback, char* buffer, std::size_t size);

// Writes a key; a null value removes the key, a null key the section. False when the file cannot
// be written; the old contents then stand.
bool WriteProfileText(const std::string& file, const char* section, const char* key,
                      const char* value);

// GetProfileText into a buffer of `size` bytes, as a text of at most size - 1 characters.
std::string ReadProfileText(const std::string& file, const std::string& section,
                            const std::string& key, const std::string& fallback, std::size_t size);

// The key's value as a number: leading blanks, an optional sign and digits are read as far as
// they go (modulo 2^32); the fallback when the key is missing.
int ReadProfileInt(const std::string& file, const std::string& section, const std::string& key,
                   int fallback);

}  // namespace quillmar::platform
