// The options as the user sees them: a property sheet with a page for file names, one for captions
// and the bill of materials, one for the KC window, and the pages of the caller.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/LanguageTable.h"
#include "options/OptionsStore.h"
#include "platform/Forms.h"

namespace quillmar {

// What the sheet offers for templates, and where it belongs.
struct SheetOffers {
  std::vector<std::string> tags;      // "%NAME%", to be put into templates
  std::vector<std::string> tagNames;  // names for new tags of the bill of materials
  std::string hostIniFile;            // masks of the file-name settings
};

// True when the user confirmed; everything is saved then. Nothing changes when he cancels.
bool ShowOptionsSheet(OptionsStore& options, const LanguageTable& texts, const SheetOffers& offers,
                      platform::DialogSurroundings surroundings);

// The pages that a caller hands over, in his order. What is no page is left out and told to
// `reject` by its index.
SheetExtras CopyPages(const void* const* pages, int count,
                      const std::function<void(int index)>& reject);

}  // namespace quillmar
