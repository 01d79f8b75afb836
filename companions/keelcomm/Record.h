// A protocol in memory: sections of keywords with values, the version, texts of other makers, and
// what has changed since the record was read from the database.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "keelcomm/Names.h"

namespace quillmar::keelcomm {

struct Entry {
  std::string keyword;  // as its first writer spelt it
  std::string value;
  std::string unit;           // of a data parameter, else empty
  std::int64_t position = 0;  // orders the entries of a record by their first writing
  bool isChanged = false;
};

struct Version {
  int major = 2;
  int minor = 0;
  bool operator==(const Version&) const = default;
};

// The keywords of a section in the order of their first writing.
class Section {
 public:
  explicit Section(std::string_view name) : name(name) {}

  const std::string& Name() const { return name; }
  const std::vector<const Entry*>& Entries() const { return ordered; }
  Entry* Find(std::string_view keyword) const;
  // `position` must be beyond that of every other entry.
  Entry& Add(std::string_view keyword, std::int64_t position);
  bool Erase(std::string_view keyword);
  void MarkStored();

 private:
  std::string name;
  std::unordered_map<std::string_view, std::unique_ptr<Entry>, NameHash, NameEqual> entries;
  std::vector<const Entry*> ordered;
};

class Record {
 public:
  // A row that must be removed from the database, by its folded names.
  using ErasedKey = std::pair<std::string, std::string>;

  const Entry* Find(std::string_view section, std::string_view keyword) const;
  const Section* FindSection(std::string_view section) const;
  std::size_t Count(std::string_view section) const;
  // Ordered by their first entries. No section is without entries.
  std::vector<const Section*> Sections() const;

  // Writes a value; the unit stays as it is.
  void Put(std::string_view section, std::string_view keyword, std::string_view value);
  void PutWithUnit(std::string_view section, std::string_view keyword, std::string_view value,
                   std::string_view unit);
  // False when there was nothing to erase.
  bool Erase(std::string_view section, std::string_view keyword);
  bool EraseSection(std::string_view section);

  // Nothing until a version was written.
  const std::optional<Version>& StoredVersion() const { return version; }
  Version CurrentVersion() const { return version.value_or(Version{}); }
  void SetVersion(Version written);

  // Texts of the buffer that this library did not make.
  const std::vector<std::string>& ForeignTexts() const { return foreignTexts; }
  void AddForeignText(std::string_view text) { foreignTexts.emplace_back(text); }

  // A row of the database. Rows come in the order of their positions.
  void AddStored(std::string_view section, std::string_view keyword, std::string_view value,
                 std::string_view unit, std::int64_t position);
  void SetStoredVersion(std::optional<Version> stored) { version = stored; }

  // Takes over the contents of another record, in place of all that stands here. A record without
  // a version leaves the version as it is.
  void ReplaceBy(const Record& other);

  // Nothing differs from the database any more.
  void MarkStored();
  // Puts what was changed here over what another process has stored meanwhile.
  void ChangeOver(Record stored);

  bool IsVersionChanged() const { return isVersionChanged; }
  // True: none of the rows in the database stands any more.
  bool IsReplaced() const { return isReplaced; }
  const std::vector<ErasedKey>& ErasedKeys() const { return erased; }
  bool IsChanged() const { return isChanged; }

 private:
  Section& SectionOf(std::string_view name);
  Entry& Written(std::string_view section, std::string_view keyword);
  void RemoveSection(std::string_view name);

  std::unordered_map<std::string_view, std::unique_ptr<Section>, NameHash, NameEqual> sections;
  std::vector<std::string> foreignTexts;
  std::optional<Version> version;
  std::int64_t nextPosition = 1;
  std::vector<ErasedKey> erased;
  bool isVersionChanged = false;
  bool isReplaced = false;
  bool isChanged = false;
};

}  // namespace quillmar::keelcomm
