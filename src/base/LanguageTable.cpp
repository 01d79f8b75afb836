#include "base/LanguageTable.h"

#include <cstring>

#include "base/Texts.h"
#include "platform/Profile.h"

namespace quillmar {
namespace {

constexpr std::size_t kSectionListSize = 2048;
constexpr std::size_t kTextSize = 2048;
constexpr const char* kFallbackLanguage = "EN";
constexpr const char* kSameAsFallback = "~";
constexpr const char* kMissingText = "Message not found";

// Names of the sections that fit into the list buffer whole. A list that was cut ends with a
// piece of a name, which is not loaded.
std::vector<std::string> SectionNames(const std::string& fileName) {
  char list[kSectionListSize] = "";
  const std::size_t length =
      platform::GetProfileText(fileName, nullptr, nullptr, "", list, sizeof list);
  const bool cut = length + 2 >= sizeof list && list[length - 1] != '\0';
  std::vector<std::string> names;
  for (const char* name = list; name < list + length && *name != '\0';
       name += std::strlen(name) + 1) {
    names.emplace_back(name);
  }
  if (cut && !names.empty()) names.pop_back();
  return names;
}

}  // namespace

bool LanguageTable::Load(const std::string& fileName, const std::string& languageCode) {
  const std::vector<std::string> sections = SectionNames(fileName);
  if (sections.empty()) return false;
  for (const std::string& name : sections) {
    std::string text = platform::ReadProfileText(fileName, name, languageCode, "", kTextSize);
    if (text.empty()) {
      Store(ParseInt(name), kMissingText);
      continue;
    }
    if (text == kSameAsFallback) {
      text = platform::ReadProfileText(fileName, name, kFallbackLanguage, "", kTextSize);
    }
    Store(ParseInt(name), ReplaceAll(text, "\\n", "\n"));
  }
  return true;
}

void LanguageTable::Store(int number, std::string text) {
  if (number >= 0) texts[number] = std::move(text);
}

const std::string& LanguageTable::GetText(int number) const {
  static const std::string missing;
  const auto found = texts.find(number);
  return found == texts.end() ? missing : found->second;
}

std::optional<std::string> LanguageTable::Replacement(const std::string& text) const {
  if (text.empty() || text.front() != '~') return std::nullopt;
  return GetText(ParseInt(std::string_view(text).substr(1)));
}

bool LanguageTable::TranslateWindow(QmWindow window) const {
  platform::ReplaceWindowTexts(window,
                               [this](const std::string& text) { return Replacement(text); });
  TranslateMenu(platform::MenuOf(window));
  return true;
}

bool LanguageTable::TranslateMenu(platform::MenuHandle menu) const {
  return platform::ReplaceMenuTexts(menu,
                                    [this](const std::string& text) { return Replacement(text); });
}

}  // namespace quillmar
