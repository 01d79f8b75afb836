// Where the suite and the module are installed, and the module's key in the registry.
#pragma once

#include <string>

#include "quillmar/Conventions.h"

namespace quillmar {

// The module's registry key, relative to a hive, without a leading backslash.
std::string GetModuleRegistryKey(bool withBackslash);

class InstallationPaths {
 public:
  explicit InstallationPaths(QmModule self);

  QmModule Self() const { return self; }
  // Folder of the module's file, without a trailing backslash.
  const std::string& ModuleFolder() const { return moduleFolder; }
  // The module's own profile file: its path with the extension "ini".
  const std::string& ProfileFile() const { return profileFile; }

  // Folder of the calculation host, without a trailing backslash: beside the module's folder, one
  // level higher, or where the host's automation class is registered (the only place looked at
  // with `registryOnly`). Empty when none of them tells. Looked up anew at each call.
  std::string GetSuiteFolder(bool registryOnly = false) const;

  // Folder of files that all programs of the suite share.
  std::string GetCommonFolder() const;

 private:
  QmModule self;
  std::string modulePath;
  std::string moduleFolder;
  std::string profileFile;
};

}  // namespace quillmar
