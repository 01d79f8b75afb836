#include "keelcomm/Record.h"

#include <algorithm>

namespace quillmar::keelcomm {

Entry* Section::Find(std::string_view keyword) const {
  const auto found = entries.find(keyword);
  return found == entries.end() ? nullptr : found->second.get();
}

Entry& Section::Add(std::string_view keyword, std::int64_t position) {
  auto entry = std::make_unique<Entry>();
  entry->keyword = keyword;
  entry->position = position;
  Entry& added = *entry;
  ordered.push_back(&added);
  entries.emplace(added.keyword, std::move(entry));
  return added;
}

bool Section::Erase(std::string_view keyword) {
  const auto found = entries.find(keyword);
  if (found == entries.end()) return false;
  const auto place = std::lower_bound(
      ordered.begin(), ordered.end(), found->second->position,
      [](const Entry* entry, std::int64_t position) { return entry->position < position; });
  ordered.erase(place);
  // The key lies within the entry: take it out first.
  const std::unique_ptr<Entry> entry = std::move(found->second);
  entries.erase(found);
  return true;
}

void Section::MarkStored() {
  for (const auto& [keyword, entry] : entries) entry->isChanged = false;
}

const Section* Record::FindSection(std::string_view section) const {
  const auto found = sections.find(section);
  return found == sections.end() ? nullptr : found->second.get();
}

const Entry* Record::Find(std::string_view section, std::string_view keyword) const {
  const Section* found = FindSection(section);
  return found == nullptr ? nullptr : found->Find(keyword);
}

std::size_t Record::Count(std::string_view section) const {
  const Section* found = FindSection(section);
  return found == nullptr ? 0 : found->Entries().size();
}

std::vector<const Section*> Record::Sections() const {
  std::vector<const Section*> list;
  list.reserve(sections.size());
  for (const auto& [name, section] : sections) list.push_back(section.get());
  std::sort(list.begin(), list.end(), [](const Section* left, const Section* right) {
    return left->Entries().front()->position < right->Entries().front()->position;
  });
  return list;
}

Section& Record::SectionOf(std::string_view name) {
  const auto found = sections.find(name);
  if (found != sections.end()) return *found->second;
  auto section = std::make_unique<Section>(name);
  Section& added = *section;
  sections.emplace(added.Name(), std::move(section));
  return added;
}

Entry& Record::Written(std::string_view section, std::string_view keyword) {
  Section& home = SectionOf(section);
  Entry* entry = home.Find(keyword);
  if (entry == nullptr) entry = &home.Add(keyword, nextPosition++);
  entry->isChanged = true;
  isChanged = true;
  return *entry;
}

void Record::Put(std::string_view section, std::string_view keyword, std::string_view value) {
  Written(section, keyword).value = value;
}

void Record::PutWithUnit(std::string_view section, std::string_view keyword, std::string_view value,
                         std::string_view unit) {
  Entry& entry = Written(section, keyword);
  entry.value = value;
  entry.unit = unit;
}

bool Record::Erase(std::string_view section, std::string_view keyword) {
  const auto found = sections.find(section);
  if (found == sections.end() || !found->second->Erase(keyword)) return false;
  erased.emplace_back(FoldedName(section), FoldedName(keyword));
  isChanged = true;
  if (found->second->Entries().empty()) RemoveSection(section);
  return true;
}

bool Record::EraseSection(std::string_view section) {
  const Section* found = FindSection(section);
  if (found == nullptr) return false;
  for (const Entry* entry : found->Entries()) {
    erased.emplace_back(FoldedName(section), FoldedName(entry->keyword));
  }
  isChanged = true;
  RemoveSection(section);
  return true;
}

void Record::RemoveSection(std::string_view name) {
  const auto found = sections.find(name);
  // The key lies within the section: take it out first.
  const std::unique_ptr<Section> section = std::move(found->second);
  sections.erase(found);
}

void Record::SetVersion(Version written) {
  version = written;
  isVersionChanged = true;
  isChanged = true;
}

void Record::AddStored(std::string_view section, std::string_view keyword, std::string_view value,
                       std::string_view unit, std::int64_t position) {
  nextPosition = std::max(nextPosition, position);
  Entry& entry = SectionOf(section).Add(keyword, nextPosition++);
  entry.value = value;
  entry.unit = unit;
}

void Record::ReplaceBy(const Record& other) {
  sections.clear();
  erased.clear();
  isReplaced = true;
  isChanged = true;
  for (const Section* section : other.Sections()) {
    for (const Entry* entry : section->Entries()) {
      PutWithUnit(section->Name(), entry->keyword, entry->value, entry->unit);
    }
  }
  foreignTexts = other.foreignTexts;
  if (other.version) SetVersion(*other.version);
}

void Record::MarkStored() {
  for (const auto& [name, section] : sections) section->MarkStored();
  erased.clear();
  isVersionChanged = false;
  isReplaced = false;
  isChanged = false;
}

void Record::ChangeOver(Record stored) {
  if (isReplaced) return;
  for (const auto& [section, keyword] : erased) stored.Erase(section, keyword);
  for (const Section* section : Sections()) {
    for (const Entry* entry : section->Entries()) {
      if (!entry->isChanged) continue;
      stored.PutWithUnit(section->Name(), entry->keyword, entry->value, entry->unit);
    }
  }
  if (isVersionChanged) stored.SetVersion(*version);
  *this = std::move(stored);
}

}  // namespace quillmar::keelcomm
