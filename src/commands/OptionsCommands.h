// The options of the application that drives the module.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

// Makes another application's options the current ones. `pages` are the caller's, see
// OptionsPage.h; what is no page is reported.
void SetOptions(const PartServices& services, const void* const* pages, int count,
                const std::string& applicationKey, const std::string& helpFile,
                unsigned helpContext);

// True when the user confirmed.
bool ShowOptionsDialog(const PartServices& services);

}  // namespace quillmar
