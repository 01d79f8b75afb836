// The general page of the options sheet: file names, folders, and the way to the depths of scans.
// It edits the registry's values directly: names that are made later read them anew.
#pragma once

#include "options/FileNameSettings.h"
#include "options/OptionsStore.h"
#include "platform/Forms.h"

namespace quillmar {

class LanguageTable;
struct SheetOffers;

class FileNamePage {
 public:
  FileNamePage(const OptionsStore& options, const LanguageTable& texts, const SheetOffers& offers);

  // The form refers to this page and to `surroundings`, which its dialogs come from.
  platform::Form MakeForm(const platform::DialogSurroundings& surroundings) const;
  // Writes what the page shows, all of it or nothing where the machine can do that, and the copies
  // for older programs.
  void Save(platform::Form& page) const;

 private:
  struct Side;
  void AddSide(platform::Form& form, const Side& side, bool shown) const;
  void SaveSide(platform::Form& page, const Side& side) const;

  const OptionsStore& options;
  const LanguageTable& texts;
  const SheetOffers& offers;
  FileNameSettings settings;
};

}  // namespace quillmar
