#include "common/ReferenceFiles.h"

#include <fmt/format.h>

#include "common/Place.h"
#include "common/Program.h"

namespace tools {

std::string ReferenceFileName(const std::string& id) {
  std::string name;
  for (const char raw : id) {
    const auto byte = static_cast<unsigned char>(raw);
    const bool plain =
        (raw >= 'A' && raw <= 'Z') || (raw >= '0' && raw <= '9') || raw == '-' || raw == '_';
    name += plain ? std::string(1, raw) : fmt::format("%{:02X}", byte);
  }
  return name + ".ref";
}

std::string WriteReferenceFile(const std::string& folder, const std::string& id,
                               const std::string& reference) {
  std::string path = JoinSystemPath(folder, ReferenceFileName(id));
  if (!WriteSystemFile(path, reference)) throw ToolError("Cannot write " + path);
  return path;
}

std::string ReadReferenceFile(const std::string& path) {
  auto text = ReadSystemFile(path);
  if (!text) throw ToolError(fmt::format("The file {} cannot be read", path));
  return std::move(*text);
}

}  // namespace tools
