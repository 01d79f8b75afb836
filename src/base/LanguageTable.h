// Numbered user texts, loaded once from the language file.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/WindowTexts.h"
#include "quillmar/Conventions.h"

namespace quillmar {

class LanguageTable {
 public:
  // False when the file's list of sections cannot be read or is empty; the table then stays
  // empty. Only sections whose names fit into a list of 2048 characters are loaded.
  bool Load(const std::string& fileName, const std::string& languageCode);

  // Empty for a number that the table does not have.
  const std::string& GetText(int number) const;

  // Replaces placeholders ("~" and a number) in the window's text, its children's texts and its
  // menu. Always true.
  bool TranslateWindow(QmWindow window) const;
  // The same in a menu and its submenus; false for no menu.
  bool TranslateMenu(platform::MenuHandle menu) const;

 private:
  void Store(int number, std::string text);
  std::optional<std::string> Replacement(const std::string& text) const;

  std::map<int, std::string> texts;
};

}  // namespace quillmar
