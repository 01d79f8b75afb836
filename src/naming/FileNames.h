// File names of generated parts: a name from the user's template, a folder by the user's rule, and
// the questions that some rules ask.
#pragma once

#include <functional>
#include <string>

#include "base/LanguageTable.h"
#include "naming/UniqueIds.h"
#include "options/FileNameSettings.h"
#include "options/OptionsStore.h"
#include "protocol/VXProtocol.h"
#include "session/CadDriverTable.h"

namespace quillmar {

// What names are made with; the same for all parts.
struct FileNameContext {
  const CadDriverTable& driver;
  const OptionsStore& options;
  const FileNameSettings& settings;
  const LanguageTable& texts;
  UniqueIds& ids;
};

// One part that needs a name. The functions are called only when the rule comes to need them.
struct FileNameRequest {
  VXProtocol& protocol;
  bool local = false;  // made for this design only, else a shared standard part
  // A local part that changes without a new library model keeps its file: it is then named by
  // change = true, modelChanged = false and nothing happens.
  bool change = false;
  bool modelChanged = true;
  // The group manager and the optimizer drive sessions in which no names are made.
  bool sessionWithoutNames = false;
  std::string caption;
  std::string extension;  // without dot
  std::string typeName;   // describes the files in a question
  std::function<bool(std::string& path)> modelFilePath;
  std::function<bool()> wantsFolder;
};

// Writes the full path into `filePath`; leaves it alone when nothing is to be made. False only
// when the user cancelled a question.
bool MakeFileName(const FileNameContext& context, const FileNameRequest& request,
                  std::string& filePath);

}  // namespace quillmar
