#include "recorder/TraceReader.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

#include "recorder/ControlBlock.h"

namespace quillmar::recorder {
namespace {

constexpr std::size_t kFields = 9;
constexpr std::string_view kBlanks = "blanks*";

template <typename Number>
bool ParseNumber(std::string_view text, Number& value) {
  const char* end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, value);
  return parsed.ec == std::errc{} && parsed.ptr == end;
}

std::vector<std::string_view> SplitFields(std::string_view line) {
  std::vector<std::string_view> fields;
  for (std::size_t tab; (tab = line.find('\t')) != std::string_view::npos;
       line.remove_prefix(tab + 1)) {
    fields.push_back(line.substr(0, tab));
  }
  fields.push_back(line);
  return fields;
}

// Splits "a, "b, c", [d, e]" at the commas outside quotes and brackets.
std::vector<std::string> SplitArguments(std::string_view list) {
  std::vector<std::string> arguments;
  std::size_t begin = 0;
  int depth = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const char character = list[i];
    if (quoted) {
      if (character == '\\') ++i;
      if (character == '"') quoted = false;
    } else if (character == '"') {
      quoted = true;
    } else if (character == '[' || character == '{') {
      ++depth;
    } else if (character == ']' || character == '}') {
      --depth;
    } else if (character == ',' && depth == 0) {
      arguments.emplace_back(list.substr(begin, i - begin));
      begin = i + 2;
    }
  }
  if (begin < list.size()) arguments.emplace_back(list.substr(begin));
  return arguments;
}

// The character that an escape stands for; `place` is on the backslash and moves behind it.
std::optional<char> Unescape(std::string_view text, std::size_t& place) {
  const char kind = place + 1 < text.size() ? text[place + 1] : '\0';
  place += 2;
  switch (kind) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'x': {
      unsigned value = 0;
      if (place + 2 > text.size()) return std::nullopt;
      const char* end = text.data() + place + 2;
      if (std::from_chars(text.data() + place, end, value, 16).ptr != end) return std::nullopt;
      place += 2;
      return static_cast<char>(value);
    }
    default:
      return kind;
  }
}

}  // namespace

std::string TracedCall::Summary() const {
  std::string text = function + "(";
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (i > 0) text += ", ";
    text += arguments[i];
  }
  return text + ") = " + result;
}

std::optional<TracedCall> ParseTraceLine(std::string_view line) {
  // A place that was handed out and never written holds NULs.
  line.remove_prefix(std::min(line.find_first_not_of('\0'), line.size()));
  const auto fields = SplitFields(line);
  if (fields.size() != kFields) return std::nullopt;
  TracedCall call;
  if (!ParseNumber(fields[0], call.number) || !ParseNumber(fields[1], call.microseconds) ||
      !ParseNumber(fields[2], call.process) || !ParseNumber(fields[8], call.duration)) {
    return std::nullopt;
  }
  const std::string_view arguments = fields[6];
  if (arguments.size() < 2 || arguments.front() != '(' || arguments.back() != ')') {
    return std::nullopt;
  }
  call.from = fields[3];
  call.to = fields[4];
  call.function = fields[5];
  call.arguments = SplitArguments(arguments.substr(1, arguments.size() - 2));
  call.result = fields[7];
  return call;
}

std::optional<std::string> TextOfArgument(std::string_view argument) {
  if (argument.starts_with('&')) argument.remove_prefix(1);
  if (argument.starts_with(kBlanks)) {
    std::size_t count = 0;
    if (!ParseNumber(argument.substr(kBlanks.size()), count)) return std::nullopt;
    return std::string(count, ' ');
  }
  if (argument.size() < 2 || argument.front() != '"' || argument.back() != '"') {
    return std::nullopt;
  }
  argument = argument.substr(1, argument.size() - 2);
  std::string text;
  for (std::size_t place = 0; place < argument.size();) {
    if (argument[place] != '\\') {
      text += argument[place++];
      continue;
    }
    const auto character = Unescape(argument, place);
    if (!character) return std::nullopt;
    text += *character;
  }
  return text;
}

std::vector<TracedCall> TraceReader::Read() const {
  std::vector<TracedCall> calls;
  std::ifstream log(folder / kLogFile, std::ios::binary);
  for (std::string line; std::getline(log, line);) {
    if (auto call = ParseTraceLine(line)) calls.push_back(std::move(*call));
  }
  std::sort(calls.begin(), calls.end(),
            [](const auto& left, const auto& right) { return left.number < right.number; });
  return calls;
}

}  // namespace quillmar::recorder
