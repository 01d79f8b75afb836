// The settings that file names are made from: where they stand in the registry, the masks of what
// the user may choose, their creation at login and the copies for older programs. The values
// themselves are read anew whenever a name is made.
#pragma once

#include <cstdint>
#include <string>

namespace quillmar {

// Kinds of folders, as stored.
enum FolderType : std::uint32_t {
  kNoFolderRule = 0,
  kAssemblyFolder = 1,
  kWorkspaceFolder = 2,
  kLibraryFolder = 4,
  kAskFolder = 8,
  kAskFile = 16,
  kUserFolder = 32,
  kContentLibraryFolder = 128
};

class FileNameSettings {
 public:
  // Takes the keys of an application ("<module key>\<settingsName>\") and the masks from the host's
  // ini file, makes missing values and exports the legacy copies.
  void Load(const std::string& applicationKey, const std::string& hostIniFile);

  // The same without making or exporting anything: for the page that shows the settings.
  void Use(const std::string& applicationKey, const std::string& hostIniFile);

  // Key of the settings, relative to a hive.
  const std::string& Key() const { return key; }

  std::uint32_t Items() const { return items; }
  std::uint32_t LocalPartsItems() const { return localPartsItems; }
  std::uint32_t SharedPartsItems() const { return sharedPartsItems; }

  // Makes each missing value, from the legacy value when there is one.
  void InitFileNameSettings(const std::string& hostIniFile) const;
  void ExportLegacyFileNameSettings() const;

 private:
  std::string key;        // ...\OptGeneral2
  std::string legacyKey;  // ...\OptGeneral
  std::uint32_t items = 0;
  std::uint32_t localPartsItems = 0;
  std::uint32_t sharedPartsItems = 0;
};

}  // namespace quillmar
