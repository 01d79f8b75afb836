#include "session/Units.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace session {
namespace {

// Items of the store: "KC1|D|<section>|<parameter>|<value>|<unit>" and
// "KC1|K|<section>|<keyword>|<value>", bytes outside printable ASCII and separators written "%XX".
constexpr std::string_view kDataItem = "KC1|D|Data|";
constexpr std::string_view kKeywordItem = "KC1|K|";
constexpr std::string_view kVersionItem = "KC1|V|";
constexpr std::string_view kItemEnd = "<@EL>";
constexpr std::string_view kNoUnit = "ND";

std::string Decode(std::string_view field) {
  const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] == '%' && i + 2 < field.size()) {
      text += static_cast<char>(digit(field[i + 1]) * 16 + digit(field[i + 2]));
      i += 2;
    } else {
      text += field[i];
    }
  }
  return text;
}

std::vector<std::string> Split(std::string_view text) {
  std::vector<std::string> fields;
  for (;;) {
    const auto cut = std::min(text.find('|'), text.size());
    fields.push_back(Decode(text.substr(0, cut)));
    if (cut == text.size()) return fields;
    text.remove_prefix(cut + 1);
  }
}

// Fields, behind what they begin with, of each item that begins so.
std::vector<std::vector<std::string>> Items(const std::string& reference,
                                            const std::string& begin) {
  std::vector<std::vector<std::string>> items;
  for (auto at = reference.find(begin); at != std::string::npos;
       at = reference.find(begin, at + 1)) {
    const auto from = at + begin.size();
    const auto end = std::min(reference.find(kItemEnd, from), reference.size());
    items.push_back(Split(std::string_view(reference).substr(from, end - from)));
  }
  return items;
}

}  // namespace

std::string LayoutOfReference(const std::string& reference) {
  const auto at = reference.find(kVersionItem);
  if (at == std::string::npos) return {};
  const auto begin = at + kVersionItem.size();
  const auto end = std::min(reference.find(kItemEnd, begin), reference.size());
  const auto fields = Split(std::string_view(reference).substr(begin, end - begin));
  return fields.size() == 2 ? fields[0] + "." + fields[1] : std::string();
}

std::string WithoutLayout(const std::string& reference) {
  std::string text = reference;
  const auto at = text.find(kVersionItem);
  if (at == std::string::npos) return text;
  const auto end = text.find(kItemEnd, at);
  return text.erase(at, end == std::string::npos ? end : end + kItemEnd.size() - at);
}

std::map<std::string, std::string> UnitsOfReference(const std::string& reference) {
  std::map<std::string, std::string> units;
  for (const auto& fields : Items(reference, std::string(kDataItem))) {
    if (fields.size() != 3) continue;
    units[fields[0]] = fields[2] == kNoUnit ? std::string() : fields[2];
  }
  return units;
}

std::vector<std::pair<std::string, std::string>> ValuesOfReference(const std::string& reference) {
  std::vector<std::pair<std::string, std::string>> values;
  for (const auto& fields : Items(reference, std::string(kDataItem))) {
    if (fields.size() == 3) values.emplace_back(fields[0], fields[1]);
  }
  return values;
}

std::map<std::string, std::string> KeywordsOfReference(const std::string& reference,
                                                       const std::string& section) {
  std::map<std::string, std::string> values;
  for (const auto& fields : Items(reference, std::string(kKeywordItem) + section + "|")) {
    if (fields.size() == 2) values[fields[0]] = fields[1];
  }
  return values;
}

}  // namespace session
