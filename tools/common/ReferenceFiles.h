// Files with reference texts, one protocol each.
#pragma once

#include <string>

namespace tools {

// "<identifier>.ref"; upper-case letters, digits, "-" and "_" stand for themselves, any other byte
// is
// "%XX": identifiers that differ in case have files that differ in more.
std::string ReferenceFileName(const std::string& id);

// Writes the file whole or not at all; its path. A ToolError when that fails.
std::string WriteReferenceFile(const std::string& folder, const std::string& id,
                               const std::string& reference);
std::string ReadReferenceFile(const std::string& path);

}  // namespace tools
