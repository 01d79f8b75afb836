#include "platform/native/ProfileFile.h"

#include <algorithm>

namespace quillmar::platform {
namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

bool IsSpace(char16_t character) {
  return (character >= 0x09 && character <= 0x0D) || character == 0x1A || character == u' ';
}

std::u16string_view TrimSpaces(std::u16string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

// Names end at a NUL.
std::u16string_view UpToNul(std::u16string_view text) { return text.substr(0, text.find(u'\0')); }

bool IsComment(std::u16string_view name) { return name.substr(0, 1) == u";"; }

}  // namespace

ProfileFile::ProfileFile(std::string_view bytes) {
  DecodedText decoded = DecodeText(bytes);
  text = std::move(decoded.text);
  encoding = decoded.encoding;
  Parse();
}

void ProfileFile::Parse() {
  sections.emplace_back();
  for (std::size_t begin = 0; begin < text.size();) {
    std::size_t end = std::min(text.find_first_of(kLineEnd, begin), text.size());
    end += text.compare(end, kLineEnd.size(), kLineEnd) == 0 ? 2 : end < text.size() ? 1 : 0;
    TakeLine({begin, end});
    begin = end;
  }
  IndexNames();
}

void ProfileFile::IndexNames() {
  sectionNames.Build(sections.size(),
                     [this](std::size_t number) { return NameIn(sections[number].name); });
  for (Section& section : sections) {
    section.names.Build(section.entries.size(),
                        [&](std::size_t number) { return NameIn(section.entries[number].name); });
  }
}

void ProfileFile::TakeLine(Range line) {
  Range content = Trim(line);
  if (content.begin == content.end || TakeHeading(line, content)) return;
  TakeEntry(line, content);
}

bool ProfileFile::TakeHeading(Range line, Range content) {
  std::size_t close = In(content).rfind(u']');
  if (text[content.begin] != u'[' || close == std::u16string_view::npos) return false;
  Section section;
  section.heading = line;
  section.name = Trim({content.begin + 1, content.begin + close});
  sections.push_back(std::move(section));
  return true;
}

void ProfileFile::TakeEntry(Range line, Range content) {
  Entry entry;
  entry.line = line;
  std::size_t equals = In(content).find(u'=');
  if (equals == std::u16string_view::npos) {
    entry.name = content;
  } else {
    equals += content.begin;
    entry.name = Trim({content.begin, equals});
    entry.value = Trim({equals + 1, content.end});
  }
  Section& section = sections.back();
  // Of several lines without a name on end only the first counts.
  bool repeated = entry.name.begin == entry.name.end && !section.entries.empty() &&
                  NameIn(section.entries.back().name).empty();
  if (repeated) return;
  section.entries.push_back(entry);
}

std::u16string_view ProfileFile::In(Range range) const {
  return std::u16string_view(text).substr(range.begin, range.end - range.begin);
}

std::u16string_view ProfileFile::NameIn(Range range) const { return UpToNul(In(range)); }

ProfileFile::Range ProfileFile::Trim(Range range) const {
  while (range.begin < range.end && IsSpace(text[range.begin])) ++range.begin;
  while (range.end > range.begin && IsSpace(text[range.end - 1])) --range.end;
  return range;
}

const ProfileFile::Section* ProfileFile::FindSection(std::u16string_view name) const {
  const std::size_t number =
      sectionNames.Find(name, [this](std::size_t other) { return NameIn(sections[other].name); });
  return number == NameIndex::kNone ? nullptr : &sections[number];
}

const ProfileFile::Entry* ProfileFile::FindEntry(const Section* section,
                                                 std::u16string_view key) const {
  if (section == nullptr) return nullptr;
  const std::size_t number = section->names.Find(
      TrimSpaces(key), [&](std::size_t other) { return NameIn(section->entries[other].name); });
  return number == NameIndex::kNone ? nullptr : &section->entries[number];
}

std::optional<std::u16string_view> ProfileFile::Find(std::u16string_view section,
                                                     std::u16string_view key) const {
  const Entry* entry = FindEntry(FindSection(TrimSpaces(section)), key);
  if (entry == nullptr || !entry->value) return std::nullopt;
  return UpToNul(In(*entry->value));
}

std::vector<std::u16string_view> ProfileFile::Keys(std::u16string_view section) const {
  std::vector<std::u16string_view> keys;
  const Section* found = FindSection(section);
  if (found == nullptr) return keys;
  for (const Entry& entry : found->entries) {
    std::u16string_view name = NameIn(entry.name);
    if (entry.value && !IsComment(name)) keys.push_back(name);
  }
  return keys;
}

std::vector<std::u16string_view> ProfileFile::Sections() const {
  std::vector<std::u16string_view> names;
  for (const Section& section : sections) {
    std::u16string_view name = NameIn(section.name);
    if (!name.empty()) names.push_back(name);
  }
  return names;
}

std::optional<std::string> ProfileFile::WithValue(std::u16string_view section,
                                                  std::u16string_view key,
                                                  std::u16string_view value) const {
  while (!value.empty() && IsSpace(value.front())) value.remove_prefix(1);
  const Section* home = FindSection(TrimSpaces(section));
  if (home == nullptr) {
    return Replaced({text.size(), text.size()}, NewSection(section, key, value));
  }
  const Entry* entry = FindEntry(home, key);
  std::u16string line;
  if (entry != nullptr) {
    if (entry->value && UpToNul(In(*entry->value)) == value) return std::nullopt;
    line.append(NameIn(entry->name));
  } else {
    line.append(TrimSpaces(key));
  }
  line.append(u"=").append(value).append(kLineEnd);
  if (entry != nullptr) return Replaced(entry->line, line);
  std::size_t end = home->entries.empty() ? home->heading.end : home->entries.back().line.end;
  bool open = end > 0 && text[end - 1] != u'\n' && text[end - 1] != u'\r';
  if (open) line.insert(0, kLineEnd);
  return Replaced({end, end}, line);
}

std::u16string ProfileFile::NewSection(std::u16string_view section, std::u16string_view key,
                                       std::u16string_view value) const {
  std::u16string lines;
  bool open = !text.empty() && text.back() != u'\n' && text.back() != u'\r';
  if (open) lines.append(kLineEnd);
  lines.append(u"[").append(TrimSpaces(section)).append(u"]").append(kLineEnd);
  return lines.append(TrimSpaces(key)).append(u"=").append(value).append(kLineEnd);
}

std::optional<std::string> ProfileFile::WithoutKey(std::u16string_view section,
                                                   std::u16string_view key) const {
  const Entry* entry = FindEntry(FindSection(section), key);
  if (entry == nullptr) return std::nullopt;
  return Replaced(entry->line, {});
}

std::optional<std::string> ProfileFile::WithoutSection(std::u16string_view section) const {
  const Section* gone = FindSection(section);
  if (gone == nullptr) return std::nullopt;
  bool last = gone == &sections.back();
  return Replaced({gone->heading.begin, last ? text.size() : (gone + 1)->heading.begin}, {});
}

std::string ProfileFile::Replaced(Range range, std::u16string_view replacement) const {
  std::u16string changed = text;
  changed.replace(range.begin, range.end - range.begin, replacement);
  return EncodeText(changed, encoding);
}

}  // namespace quillmar::platform
