#include "keelcomm/BufferItems.h"

#include <charconv>

namespace quillmar::keelcomm {
namespace {

constexpr std::string_view kSignature = "KC1|";
constexpr std::string_view kMarkerStart = "<@";
constexpr char kSeparator = '|';
constexpr char kHexDigits[] = "0123456789ABCDEF";

enum ItemKind : char { kVersion = 'V', kKeyword = 'K', kDataParameter = 'D', kText = 'T' };

bool StandsForItself(unsigned char character) {
  return character > 0x1F && character < 0x7F && character != '%' && character != kSeparator &&
         character != '<';
}

void AppendField(std::string& item, std::string_view field) {
  item += kSeparator;
  for (const char raw : field) {
    const auto character = static_cast<unsigned char>(raw);
    if (StandsForItself(character)) {
      item += raw;
    } else {
      item += '%';
      item += kHexDigits[character >> 4];
      item += kHexDigits[character & 15];
    }
  }
}

template <typename... Fields>
std::string MakeItem(ItemKind kind, const Fields&... fields) {
  std::string item(kSignature);
  item += static_cast<char>(kind);
  (AppendField(item, fields), ...);
  return item;
}

std::optional<unsigned> HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return std::nullopt;
}

std::optional<std::string> ReadField(std::string_view written) {
  std::string field;
  field.reserve(written.size());
  for (std::size_t i = 0; i < written.size(); ++i) {
    if (written[i] != '%') {
      if (!StandsForItself(static_cast<unsigned char>(written[i]))) return std::nullopt;
      field += written[i];
      continue;
    }
    if (i + 2 >= written.size()) return std::nullopt;
    const auto high = HexDigit(written[i + 1]);
    const auto low = HexDigit(written[i + 2]);
    if (!high || !low || (*high == 0 && *low == 0)) return std::nullopt;
    field += static_cast<char>(*high * 16 + *low);
    i += 2;
  }
  return field;
}

// The fields of an item behind its kind.
std::optional<std::vector<std::string>> ReadFields(std::string_view written) {
  std::vector<std::string> fields;
  while (!written.empty()) {
    if (written.front() != kSeparator) return std::nullopt;
    written.remove_prefix(1);
    const std::string_view one = written.substr(0, written.find(kSeparator));
    auto field = ReadField(one);
    if (!field) return std::nullopt;
    fields.push_back(std::move(*field));
    written.remove_prefix(one.size());
  }
  return fields;
}

std::optional<int> ReadNumber(const std::string& text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (text.empty() || read.ec != std::errc{} || read.ptr != end) return std::nullopt;
  return number;
}

bool IsName(const std::string& text) { return !text.empty(); }

bool ReadOwnItem(std::string_view item, Record& record) {
  if (item.size() <= kSignature.size()) return false;
  const char kind = item[kSignature.size()];
  const auto fields = ReadFields(item.substr(kSignature.size() + 1));
  if (!fields) return false;
  const auto& field = *fields;
  switch (kind) {
    case kVersion: {
      if (field.size() != 2) return false;
      const auto major = ReadNumber(field[0]);
      const auto minor = ReadNumber(field[1]);
      if (!major || !minor) return false;
      record.SetVersion({*major, *minor});
      return true;
    }
    case kKeyword:
      if (field.size() != 3 || !IsName(field[0]) || !IsName(field[1])) return false;
      record.PutWithUnit(field[0], field[1], field[2], "");
      return true;
    case kDataParameter:
      if (field.size() != 4 || !IsName(field[0]) || !IsName(field[1])) return false;
      record.PutWithUnit(field[0], field[1], field[2], field[3]);
      return true;
    case kText:
      if (field.size() != 1) return false;
      record.AddForeignText(field[0]);
      return true;
    default:
      return false;
  }
}

bool MustBeWrapped(std::string_view text) {
  return text.find(kMarkerStart) != std::string_view::npos || text.starts_with(kSignature);
}

}  // namespace

std::vector<std::string> BufferItemsOf(const Record& record) {
  std::vector<std::string> items;
  const auto sections = record.Sections();
  // Foreign texts alone go out as they came in.
  if (record.StoredVersion() || !sections.empty()) {
    const Version version = record.CurrentVersion();
    items.push_back(
        MakeItem(kVersion, std::to_string(version.major), std::to_string(version.minor)));
  }
  for (const Section* section : sections) {
    for (const Entry* entry : section->Entries()) {
      items.push_back(entry->unit.empty()
                          ? MakeItem(kKeyword, section->Name(), entry->keyword, entry->value)
                          : MakeItem(kDataParameter, section->Name(), entry->keyword, entry->value,
                                     entry->unit));
    }
  }
  for (const std::string& text : record.ForeignTexts()) {
    items.push_back(MustBeWrapped(text) ? MakeItem(kText, text) : text);
  }
  return items;
}

std::optional<Record> RecordFromItems(const std::vector<std::string_view>& items) {
  std::optional<Record> record(std::in_place);
  for (const std::string_view item : items) {
    if (!item.starts_with(kSignature)) {
      record->AddForeignText(item);
    } else if (!ReadOwnItem(item, *record)) {
      return std::nullopt;
    }
  }
  return record;
}

}  // namespace quillmar::keelcomm
