// How view keys are renamed when a protocol changes its layout: a table that is loaded from
// "ProtConv.ini" and lives as long as the module.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace quillmar {

// Converter kinds, each with its own flag in the shared table.
enum class ConverterKind : std::size_t { Default, Gear1, Gear2, Gear3, Shaft };
inline constexpr std::size_t kConverterKinds = 5;

// One table for all kinds: a kind that has loaded its section once goes on with the table as it
// then is, also when another kind has filled it anew since.
class ViewKeyMapping {
 public:
  // Fills the table from `section` unless `kind` has done so before; true when the table has an
  // entry afterwards. An entry without a value stops the loading: no entry then counts, and the
  // section will be read again next time.
  bool Load(ConverterKind kind, const std::string& iniPath, const std::string& section);

  // Value of an entry whose key begins with `viewKey`, in any case; null when there is none.
  const std::string* Find(const std::string& viewKey) const;

 private:
  std::vector<std::pair<std::string, std::string>> entries;
  std::array<bool, kConverterKinds> loaded{};
};

}  // namespace quillmar
