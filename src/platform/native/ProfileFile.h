// A profile file taken apart as the Windows profile functions do it, and changes of single lines
// that leave all others as they are.
//
// Lines end at a line feed or a carriage return. Blanks, control characters of the
// space kind and Ctrl-Z around lines, keys and values do not count. A line that begins with "["
// and holds a "]" is a heading; others are keys, with a value behind the first "=".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/native/NameIndex.h"
#include "platform/native/TextFiles.h"

namespace quillmar::platform {

class ProfileFile {
 public:
  ProfileFile() = default;
  explicit ProfileFile(std::string_view bytes);
  ProfileFile(const ProfileFile&) = delete;
  ProfileFile& operator=(const ProfileFile&) = delete;
  ProfileFile(ProfileFile&&) = default;
  ProfileFile& operator=(ProfileFile&&) = default;

  // Value of the first key of that name in the first section of that name.
  std::optional<std::u16string_view> Find(std::u16string_view section,
                                          std::u16string_view key) const;
  // Keys of the first section of that name that have a value and are no comments, in order.
  std::vector<std::u16string_view> Keys(std::u16string_view section) const;
  // Headings in order, equal ones too.
  std::vector<std::u16string_view> Sections() const;

  // The file's bytes after a change; nothing when there is nothing to be changed.
  std::optional<std::string> WithValue(std::u16string_view section, std::u16string_view key,
                                       std::u16string_view value) const;
  std::optional<std::string> WithoutKey(std::u16string_view section, std::u16string_view key) const;
  std::optional<std::string> WithoutSection(std::u16string_view section) const;

 private:
  // A range of the text.
  struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
  };
  struct Entry {
    Range line;  // with its line end
    Range name;
    std::optional<Range> value;
  };
  struct Section {
    // The whole line. What stands before the first heading is a section without heading and name.
    Range heading;
    Range name;
    std::vector<Entry> entries;
    NameIndex names;  // of the entries
  };

  void Parse();
  void TakeLine(Range line);
  bool TakeHeading(Range line, Range content);
  void TakeEntry(Range line, Range content);

  void IndexNames();

  std::u16string_view In(Range range) const;
  // The text of a name, which ends at a NUL.
  std::u16string_view NameIn(Range range) const;
  Range Trim(Range range) const;
  const Section* FindSection(std::u16string_view name) const;
  const Entry* FindEntry(const Section* section, std::u16string_view key) const;
  std::string Replaced(Range range, std::u16string_view replacement) const;
  std::u16string NewSection(std::u16string_view section, std::u16string_view key,
                            std::u16string_view value) const;

  std::u16string text;
  TextEncoding encoding = TextEncoding::CodePage;
  std::vector<Section> sections;
  NameIndex sectionNames;
};

}  // namespace quillmar::platform
