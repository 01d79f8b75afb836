// What the commands ask the CAD: the selected object, the active assembly, all parts. Texts that do
// not fit into the usual buffer are asked for once more; nothing is reported.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/CadDriverTable.h"

namespace quillmar {

// Reference text of the object that the user selected; nothing when there is none.
std::optional<std::string> SelectedReference(const CadDriverTable& driver);

struct ActiveAssembly {
  std::string reference;
  std::string description;
  std::string identifier;
};
std::optional<ActiveAssembly> AskActiveAssembly(const CadDriverTable& driver);

// File path of the active assembly; empty when the CAD does not tell it.
std::string AssemblyPath(const CadDriverTable& driver);
// Name of the active assembly; nothing when the CAD does not tell it.
std::optional<std::string> AssemblyName(const CadDriverTable& driver);

// Reference texts of all parts; nothing when the CAD does not give the list.
std::optional<std::vector<std::string>> SplitAllParts(const CadDriverTable& driver);

}  // namespace quillmar
