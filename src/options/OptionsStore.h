// The user's options of the calling application: read from the registry, user's hive first, and
// kept in memory until they are read again. One object for the life of the module; Replace puts
// another application's options into it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "quillmar/OptionsPage.h"

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

// What the user edits in the sheet beside the file names; saved as a whole.
struct EditedOptions {
  std::string captionTemplate;
  bool upperCase = false;
  // 0 keeps spaces in captions, 1 removes them, any other value makes them "_".
  int replaceSpaces = 0;
  std::vector<BomTag> tags;
  bool defaultTags = false;  // the first three tags are the default ones
  KcWindowOptions kcWindow;
};

// Which of our pages the sheet has.
struct ShownPages {
  bool general = true;
  bool bom = true;
  bool kc = true;
};

// What a caller adds to the sheet: his pages, and a help file with the topic of our own pages.
struct SheetExtras {
  std::vector<QmOptionsPage> pages;
  std::vector<std::string> titles;  // of the pages
  std::string helpFile;
  unsigned helpContext = 0;
};

// Texts of the first three tags that make them default tags: the CAD gets the calculation's own
// fields for them.
inline constexpr const char* kDefaultTagTexts[] = {"Description", "Size", "Standard"};

class OptionsStore {
 public:
  // `key` is the registry key of the options, relative to a hive, without trailing backslash.
  OptionsStore(std::string title, std::string key);

  // Takes another application's options: its key, pages, flags and settings.
  void Replace(std::string title, std::string key, SheetExtras extras = {});
  // Reads captions, tags and KC settings again, and forgets the KC window.
  void ReadConfiguration();

  const EditedOptions& Edited() const { return edited; }
  // Takes over what the user edited and writes it into his hive, all of it or nothing where the
  // machine can do that; a failed write is not reported. The KC window is told.
  void Save(EditedOptions fresh);
  // The default tags that a save with the flag left in the registry; empty when there are none.
  std::vector<BomTag> StoredDefaultTags() const;
  // The window of subsidiary calculations rereads its settings after each save. Whoever makes such
  // a window registers it, anew after the options were read again; this library makes none.
  void RegisterKcWindow(QmWindow window) { kcWindowHandle = window; }

  const std::string& Key() const { return key; }
  const std::string& Title() const { return title; }

  // Options of section `section`; user, then machine, then the default.
  std::string ReadOptionText(const std::string& section, const std::string& name,
                             const std::string& fallback) const;
  int ReadOptionInt(const std::string& section, const std::string& name, int fallback) const;
  // Written for the user; a key that cannot be made is skipped. A text without a name deletes the
  // section.
  void WriteOptionText(const std::string& section, const std::string& name,
                       const std::string& text) const;
  void WriteOptionInt(const std::string& section, const std::string& name, int value) const;
  void DeleteSection(const std::string& section) const;

  // "Show2": the user chooses for each part whether it is local.
  bool SmartParts() const { return flags[0]; }
  // Flags 1 to 9.
  bool Flag(int number) const { return flags[static_cast<std::size_t>(number - 1)]; }

  const ShownPages& Pages() const { return pages; }
  const SheetExtras& Extras() const { return extras; }

  const std::string& CaptionTemplate() const { return edited.captionTemplate; }
  bool UpperCase() const { return edited.upperCase; }
  int ReplaceSpaces() const { return edited.replaceSpaces; }
  const std::vector<BomTag>& Tags() const { return edited.tags; }
  bool DefaultTags() const { return edited.defaultTags; }
  const KcWindowOptions& KcWindow() const { return edited.kcWindow; }

 private:
  void ReadFlags();
  void ReadTags();
  void WriteBom() const;
  void WriteKc() const;
  bool IsDefaultTag(std::size_t index) const;

  std::string title;
  std::string key;
  std::array<bool, 9> flags{};
  ShownPages pages;
  SheetExtras extras;
  EditedOptions edited;
  QmWindow kcWindowHandle = 0;  // 0: not registered
};

}  // namespace quillmar
