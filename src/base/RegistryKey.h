// An open registry key with the reads and writes that the module uses. Reads that look at the
// user first and at the machine second are static.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Registry.h"

namespace quillmar {

class RegistryKey {
 public:
  // Both close any open key first and skip one leading backslash of `path`. Open wants an existing
  // key, Create makes it when missing.
  bool Open(platform::Hive root, const std::string& path);
  bool Create(platform::Hive root, const std::string& path);
  bool Close();
  bool IsOpen() const { return handle.has_value(); }

  // Whether the value is there, of whatever type.
  bool HasValue(const std::string& name) const;
  // Bytes of a value whose stored type is `type`; nothing when missing or of another type.
  std::optional<std::string> QueryValue(const std::string& name, platform::RegistryType type) const;
  bool SetValue(const std::string& name, platform::RegistryType type, const std::string& data);

  // Texts of at most 2047 bytes as stored; longer ones cannot be read. `out` is emptied on
  // failure.
  std::string ReadString(const std::string& name) const;
  bool ReadString(const std::string& name, std::string& out) const;
  bool WriteString(const std::string& name, const std::string& text);

  // `out` is untouched on failure.
  std::uint32_t ReadDword(const std::string& name) const;
  bool ReadDword(const std::string& name, std::uint32_t& out) const;
  bool WriteDword(const std::string& name, std::uint32_t value);

  bool DeleteValue(const std::string& name);
  // Empties the key: every value and every sub-key below it, depth first, and its default entry.
  bool DeleteKey();

  // Names of at most 2046 characters; nothing at the end.
  std::optional<std::string> EnumKey(std::uint32_t index) const;
  std::optional<platform::NamedRegistryValue> EnumValue(std::uint32_t index) const;

  static bool ReadStringUserThenMachine(const std::string& path, const std::string& name,
                                        std::string& out);
  static bool ReadDwordUserThenMachine(const std::string& path, const std::string& name,
                                       std::uint32_t& out);
  static bool ReadFlagUserThenMachine(const std::string& path, const std::string& name, bool& out);

 private:
  std::optional<platform::RegistryHandle> handle;
  platform::Hive root = platform::Hive::CurrentUser;
  std::string path;
};

}  // namespace quillmar
