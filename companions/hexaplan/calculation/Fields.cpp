#include "hexaplan/calculation/Fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace hexaplan {

namespace {

char LowerLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

template <typename Text>
const Text* Find(const std::map<std::string, Text, NameLess>& texts, const std::string& name) {
  const auto found = texts.find(name);
  return found != texts.end() ? &found->second : nullptr;
}

}  // namespace

bool NameLess::operator()(const std::string& left, const std::string& right) const {
  return std::lexicographical_compare(
      left.begin(), left.end(), right.begin(), right.end(),
      [](char a, char b) { return LowerLetter(a) < LowerLetter(b); });
}

std::string NumberText(double value) {
  if (value == 0.0) value = 0.0;  // no "-0"
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 8);
  return std::string(text, end.ptr);
}

bool ParseNumber(std::string_view text, double& value) {
  std::string plain(Trimmed(text));
  std::replace(plain.begin(), plain.end(), ',', '.');
  const char* begin = plain.data();
  const char* end = begin + plain.size();
  if (begin != end && *begin == '+') {
    ++begin;
    if (begin != end && *begin == '-') return false;
  }
  const auto result = std::from_chars(begin, end, value);
  return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

void Inputs::SetStored(const std::string& name, const std::string& text, const std::string& unit) {
  if (!Trimmed(text).empty()) stored[name] = {text, unit};
}

void Inputs::SetOrdered(const std::string& name, const std::string& text) { ordered[name] = text; }

bool Inputs::IsGiven(const std::string& name) const {
  return ordered.count(name) != 0 || stored.count(name) != 0;
}

double Inputs::Read(const Field& field, int number) {
  return Read(field, std::string(field.name) + "_" + std::to_string(number));
}

void Inputs::ChooseUnits() {
  units = ReadWhole(kUnits) == 1 ? UnitSystem::Inch : UnitSystem::Metric;
}

std::string Inputs::Shown(double value, const char* unit) const {
  return NumberText(value / FactorOf(unit, units));
}

std::string Inputs::ShownWithUnit(double value, const char* unit) const {
  return Shown(value, unit) + " " + UnitName(unit, units);
}

std::string Inputs::LimitsText(const Field& field) const {
  std::string text = Shown(field.least, field.unit) + " to " + Shown(field.most, field.unit);
  if (std::string_view(field.unit) != "ND") text += std::string(" ") + UnitName(field.unit, units);
  return text;
}

double Inputs::Read(const Field& field, const std::string& name) {
  asked.insert(name);
  const double factor = FactorOf(field.unit, units);
  const bool inchFallback = units == UnitSystem::Inch && field.inchFallback != 0;
  const double fallback = inchFallback ? field.inchFallback * factor : field.fallback;
  double given = fallback / factor;
  const std::string* text = Find(ordered, name);
  const StoredText* kept = Find(stored, name);
  if (text == nullptr && kept != nullptr) text = &kept->text;
  if (text != nullptr && !ParseNumber(*text, given)) {
    throw InputError(name,
                     std::string("\"") + *text + "\" is not a number (" + field.meaning + ").");
  }
  if (text != nullptr && ordered.count(name) == 0) {
    given *= FactorBetween(field.unit, kept->unit) / factor;
  }
  const double value = text != nullptr ? given * factor : fallback;
  if (value < field.least || value > field.most) {
    throw InputError(
        name, NumberText(given) + " is outside " + LimitsText(field) + " (" + field.meaning + ").");
  }
  if (field.whole && value != std::floor(value)) {
    throw InputError(name, NumberText(value) + " is not a whole number (" + field.meaning + ").");
  }
  parameters.push_back({name, NumberText(given), UnitName(field.unit, units)});
  return value;
}

void Inputs::Replace(const Field& field, double value) {
  const auto known = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const auto& read) { return read.name == field.name; });
  if (known != parameters.end()) {
    known->value = Shown(value, field.unit);
  } else {
    parameters.push_back({field.name, Shown(value, field.unit), UnitName(field.unit, units)});
  }
}

void Inputs::RefuseUnknown(const std::string& calculationName) const {
  for (const auto& [name, text] : ordered) {
    if (asked.count(name) == 0) {
      throw InputError(name, "the calculation \"" + calculationName + "\" has no such field.");
    }
  }
}

}  // namespace hexaplan
