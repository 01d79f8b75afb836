// Templates of names, with values that hold tokens themselves.
#include <map>

#include "Fuzzing.h"
#include "naming/NameTemplate.h"

// Lines: the template, then "token=value" lines.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmar;
  std::string_view input = fuzz::Input(data, size);
  const std::string text(fuzz::TakeUntil(input, '\n'));
  std::map<std::string, std::string, std::less<>> values;
  std::size_t longest = 0;
  while (!input.empty()) {
    std::string_view line = fuzz::TakeUntil(input, '\n');
    const std::string token(fuzz::TakeUntil(line, '='));
    values[token] = line;
    longest = std::max(longest, line.size());
  }
  const std::string expanded = ExpandNameTemplate(text, [&](const std::string& token) {
    const auto found = values.find(token);
    return found == values.end() ? std::string() : found->second;
  });
  fuzz::Require(expanded.size() <= text.size() * (longest + 1) + kMaxNestedLength + longest,
                "the expansion has a bound");
  if (text.find('%') == std::string::npos) fuzz::Require(expanded == text, "a plain text stays");
  return 0;
}
