#include "drawboard/Numbers.h"

#include "platform/System.h"

namespace drawboard {

Numbers::Numbers(const NamedTexts& parameters) {
  for (const NamedText& parameter : parameters) {
    if (const auto value = ParseNumber(parameter.value)) {
      values.try_emplace(quillmar::platform::LowerCase(parameter.name), *value);
    }
  }
}

std::optional<double> Numbers::Of(const std::string& lowerCaseName) const {
  const auto found = values.find(lowerCaseName);
  if (found == values.end()) return std::nullopt;
  return found->second;
}

}  // namespace drawboard
