// The user's options of the calling application: read from the registry, user's hive first, and
// kept in memory until they are read again. One object for the life of the module; Replace puts
// another application's options into it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quillmar {

// One bill-of-materials tag: the name under which the CAD stores the value, and the template that
// makes the value.
struct BomTag {
  std::string name;
  std::string text;
};

struct KcWindowOptions {
  bool showCheckActivate = false;
  bool activateWindow = false;
  int pictureSize = 56;  // the stored size less 16
  bool showText = true;
  bool iconView = true;
  bool useWindow = true;
};

class OptionsStore {
 public:
  // `key` is the registry key of the options, relative to a hive, without trailing backslash.
  OptionsStore(std::string title, std::string key);

  // Takes another application's options: its key, flags and settings.
  void Replace(std::string title, std::string key);
  // Reads captions, tags and KC settings again.
  void ReadConfiguration();

  const std::string& Key() const { return key; }
  const std::string& Title() const { return title; }

  // Options of section `section`; user, then machine, then the default.
  std::string ReadOptionText(const std::string& section, const std::string& name,
                             const std::string& fallback) const;
  int ReadOptionInt(const std::string& section, const std::string& name, int fallback) const;
  // Written for the user; a key that cannot be made is skipped.
  void WriteOptionText(const std::string& section, const std::string& name,
                       const std::string& text) const;
  void WriteOptionInt(const std::string& section, const std::string& name, int value) const;
  void DeleteSection(const std::string& section) const;

  // "Show2": the user chooses for each part whether it is local.
  bool SmartParts() const { return flags[0]; }
  // Flags 1 to 9.
  bool Flag(int number) const { return flags[static_cast<std::size_t>(number - 1)]; }

  const std::string& CaptionTemplate() const { return captionTemplate; }
  bool UpperCase() const { return upperCase; }
  // 0 keeps spaces in captions, 1 removes them, any other value makes them "_".
  int ReplaceSpaces() const { return replaceSpaces; }
  const std::vector<BomTag>& Tags() const { return tags; }
  // The first three tags are the default ones.
  bool DefaultTags() const { return defaultTags; }
  const KcWindowOptions& KcWindow() const { return kcWindow; }

 private:
  void ReadFlags();
  void ReadTags();

  std::string title;
  std::string key;
  std::array<bool, 9> flags{};
  std::string captionTemplate;
  bool upperCase = false;
  int replaceSpaces = 0;
  std::vector<BomTag> tags;
  bool defaultTags = false;
  KcWindowOptions kcWindow;
};

}  // namespace quillmar
