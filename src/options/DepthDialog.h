// The question how far a scan goes up to parents and down to children.
#pragma once

#include <optional>
#include <set>

#include "base/LanguageTable.h"
#include "options/OptionsStore.h"
#include "platform/Forms.h"

namespace quillmar {

// Levels: 0 none, -1 no limit.
struct Depths {
  int parents = -1;
  int children = -1;
};

// The numbers between "none" and "no limit", as the user has left them.
std::set<int> OfferedDepths(const OptionsStore& options);

// Asks with the numbers and the choice of the last time, and keeps those of this time. Nothing
// when the user cancels.
std::optional<Depths> AskDepths(const OptionsStore& options, const LanguageTable& texts,
                                platform::DialogSurroundings surroundings);

}  // namespace quillmar
