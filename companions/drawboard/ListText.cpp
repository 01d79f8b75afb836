#include "drawboard/ListText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_map>

namespace drawboard {
namespace {

constexpr std::string_view kComma = "<VXCOMMA>";
constexpr std::string_view kViewHead = "*view*";
constexpr std::string_view kIdentifierMarkers[] = {"<@PID>", "<@GMHPID>"};

std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
    at += to.size();
  }
  return text;
}

// The fields of a comma-separated text. A comma at the very end closes the last field.
std::vector<std::string> Fields(std::string_view text) {
  std::vector<std::string> fields;
  while (!text.empty()) {
    const auto cut = std::min(text.find(','), text.size());
    fields.push_back(ReplaceAll(std::string(text.substr(0, cut)), kComma, ","));
    text.remove_prefix(std::min(cut + 1, text.size()));
  }
  return fields;
}

// Keeps the last value of a name in the place of its first one: the CAD keys its data by name.
NamedTexts KeyedByName(NamedTexts items) {
  std::unordered_map<std::string, std::size_t> places;
  NamedTexts keyed;
  for (NamedText& item : items) {
    const auto [place, fresh] = places.try_emplace(item.name, keyed.size());
    if (fresh) {
      keyed.push_back(std::move(item));
    } else {
      keyed[place->second].value = std::move(item.value);
    }
  }
  return keyed;
}

}  // namespace

ParameterList ParseParameters(std::string_view text) {
  ParameterList list;
  std::vector<std::string> fields = Fields(text);
  if (fields.size() % 2 != 0) fields.emplace_back();
  for (std::size_t i = 0; i < fields.size(); i += 2) {
    if (i == 0 && fields[i] == kViewHead) {
      list.view = fields[i + 1];
    } else {
      list.parameters.push_back({std::move(fields[i]), std::move(fields[i + 1])});
    }
  }
  list.parameters = KeyedByName(std::move(list.parameters));
  return list;
}

std::string FormatList(const NamedTexts& items) {
  std::string text;
  for (const NamedText& item : items) {
    if (!text.empty()) text += ',';
    text += item.name + ',' + ReplaceAll(item.value, ",", kComma);
  }
  return text;
}

std::string JoinNames(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    if (!text.empty()) text += ',';
    text += name;
  }
  return text;
}

NamedTexts CopyPairs(const ExtDataPair* pairs, int count) {
  NamedTexts copies;
  for (int i = 0; pairs != nullptr && i < count; ++i) {
    const auto copy = [](const char* text) { return std::string(text != nullptr ? text : ""); };
    copies.push_back({copy(pairs[i].name), copy(pairs[i].value)});
  }
  return KeyedByName(std::move(copies));
}

const std::string* FindText(const NamedTexts& items, std::string_view name) {
  const auto found = std::find_if(items.begin(), items.end(),
                                  [&](const NamedText& item) { return item.name == name; });
  return found != items.end() ? &found->value : nullptr;
}

void PutText(NamedTexts& items, const std::string& name, const std::string& value) {
  for (NamedText& item : items) {
    if (item.name != name) continue;
    item.value = value;
    return;
  }
  items.push_back({name, value});
}

void AddName(std::vector<std::string>& names, std::string name) {
  if (std::find(names.begin(), names.end(), name) == names.end()) {
    names.push_back(std::move(name));
  }
}

NamedTexts RenewTexts(NamedTexts fresh, const NamedTexts& former,
                      const std::vector<std::string>& kept) {
  for (const std::string& name : kept) {
    const std::string* value = FindText(former, name);
    if (value != nullptr && FindText(fresh, name) == nullptr) fresh.push_back({name, *value});
  }
  return fresh;
}

std::string IdentifierOf(std::string_view connection) {
  for (const std::string_view marker : kIdentifierMarkers) {
    const auto at = connection.find(marker);
    if (at != std::string_view::npos) return std::string(connection.substr(0, at));
  }
  return {};
}

std::string FormatNumber(double value) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 8);
  return std::string(text, end.ptr);
}

std::optional<double> ParseNumber(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace drawboard
