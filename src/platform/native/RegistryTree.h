// One hive of the registry in memory. Names and texts are Unicode here, as on Windows: what other
// programs wrote is kept whole even where the code page has no character for it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar::platform {

// Kinds of values that have a form of their own in files and interfaces.
inline constexpr std::uint32_t kRegistryText = 1;
inline constexpr std::uint32_t kRegistryExpandableText = 2;
inline constexpr std::uint32_t kRegistryBinary = 3;
inline constexpr std::uint32_t kRegistryDword = 4;
inline constexpr std::uint32_t kRegistryTextList = 7;

// A value as stored. The bytes of texts are UTF-16, little end first.
struct StoredValue {
  std::u16string name;
  std::uint32_t type = 0;
  std::string bytes;
};

// A key with its values and sub-keys, both in the order of their names without regard to case:
// the order in which they are enumerated.
struct RegistryNode {
  std::u16string name;
  std::map<std::u16string, StoredValue> values;     // by folded name
  std::map<std::u16string, RegistryNode> children;  // by folded name
  // Lines of the file below this key's heading that are no values (comments, damaged lines).
  std::vector<std::u16string> otherLines;

  RegistryNode* Find(std::u16string_view path);
  // Null when a name on the path is not allowed.
  RegistryNode* Create(std::u16string_view path);
  // Removes the key with all that is below it.
  void Erase(std::u16string_view path);
  void Set(StoredValue value);
};

// Kinds of values whose bytes are texts.
bool IsTextType(std::uint32_t type);

// UTF-16 text of a value's bytes, and back. A last odd byte is dropped.
std::u16string TextOfBytes(std::string_view bytes);
std::string BytesOfText(std::u16string_view text);

}  // namespace quillmar::platform
