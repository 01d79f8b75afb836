#include "options/FileNameSettings.h"

#include <optional>

#include "base/RegistryKey.h"
#include "platform/Profile.h"
#include "platform/System.h"

namespace quillmar {
namespace {

constexpr const char* kHostSection = "Quillmar-General";
constexpr std::size_t kDefaultNameBuffer = 512;

constexpr int kDefaultItems = 7;
constexpr int kDefaultLocalPartsItems = 57;
constexpr int kDefaultSharedPartsItems = 121;

// Folder kinds in the older programs' settings.
constexpr std::uint32_t kLegacyAssembly = 0;
constexpr std::uint32_t kLegacyFolder = 1;
constexpr std::uint32_t kLegacyAsk = 2;

std::uint32_t FolderTypeFromLegacy(std::uint32_t legacy) {
  if (legacy == kLegacyAssembly) return kAssemblyFolder;
  return legacy == kLegacyFolder ? kUserFolder : kAskFile;
}

std::optional<std::uint32_t> LegacyFromFolderType(std::uint32_t type) {
  switch (type) {
    case kAssemblyFolder:
    case kWorkspaceFolder:
    case kLibraryFolder:
    case kContentLibraryFolder:
      return kLegacyAssembly;
    case kUserFolder:
      return kLegacyFolder;
    case kAskFolder:
    case kAskFile:
      return kLegacyAsk;
    default:
      return std::nullopt;
  }
}

std::optional<std::uint32_t> Copied(std::uint32_t value) { return value; }

std::optional<std::string> ReadText(const std::string& path, const char* name) {
  std::string text;
  if (!RegistryKey::ReadStringUserThenMachine(path, name, text)) return std::nullopt;
  return text;
}

std::optional<std::uint32_t> ReadNumber(const std::string& path, const char* name) {
  std::uint32_t value = 0;
  if (!RegistryKey::ReadDwordUserThenMachine(path, name, value)) return std::nullopt;
  return value;
}

bool Exists(const std::string& path, const char* name) {
  for (const auto hive : {platform::Hive::CurrentUser, platform::Hive::LocalMachine}) {
    RegistryKey key;
    if (key.Open(hive, path) && key.HasValue(name)) return true;
  }
  return false;
}

std::uint32_t ReadMask(const std::string& hostIniFile, const char* name, int fallback) {
  return static_cast<std::uint32_t>(
      platform::ReadProfileInt(hostIniFile, kHostSection, name, fallback));
}

struct TextRow {
  const char* name;
  const char* legacyName;
};

constexpr TextRow kTexts[] = {
    {"LocalFileName", "TitleExt1"},
    {"LocalFolder", "SmartDir"},
    {"SharedFileName", "TitleExt2"},
    {"SharedFolder", "StandardDir"},
};

// A number that the older programs hold under another name, perhaps in other units.
struct ExportRow {
  const char* name;
  const char* legacyName;
  std::optional<std::uint32_t> (*toLegacy)(std::uint32_t);
};

constexpr ExportRow kExportedNumbers[] = {
    {"LocalFolderType", "SmartDirType", LegacyFromFolderType},
    {"SharedStructure", "StandardDirType", Copied},
    {"ReplaceSpaces", "ReplaceSpaces", Copied},
};

// The settings of one user while they are completed: values that exist anywhere stay, also those
// that this module cannot read.
class MissingValues {
 public:
  MissingValues(RegistryKey& target, const std::string& path, const std::string& legacyPath)
      : target(target), path(path), legacyPath(legacyPath) {}

  void MakeText(const char* name, const char* legacyName, const std::string& fallback) {
    if (Exists(path, name)) return;
    target.WriteString(name, ReadText(legacyPath, legacyName).value_or(fallback));
  }

  void MakeNumber(const char* name, std::optional<std::uint32_t> legacy, std::uint32_t fallback) {
    if (!Exists(path, name)) target.WriteDword(name, legacy.value_or(fallback));
  }

  std::optional<std::uint32_t> Legacy(const char* name) const {
    return ReadNumber(legacyPath, name);
  }

 private:
  RegistryKey& target;
  const std::string& path;
  const std::string& legacyPath;
};

}  // namespace

void FileNameSettings::Load(const std::string& applicationKey, const std::string& hostIniFile) {
  Use(applicationKey, hostIniFile);
  InitFileNameSettings(hostIniFile);
  ExportLegacyFileNameSettings();
}

void FileNameSettings::Use(const std::string& applicationKey, const std::string& hostIniFile) {
  key = applicationKey + "OptGeneral2";
  legacyKey = applicationKey + "OptGeneral";
  items = ReadMask(hostIniFile, "Items", kDefaultItems);
  localPartsItems = ReadMask(hostIniFile, "LocalPartsItems", kDefaultLocalPartsItems);
  sharedPartsItems = ReadMask(hostIniFile, "SharedPartsItems", kDefaultSharedPartsItems);
}

void FileNameSettings::InitFileNameSettings(const std::string& hostIniFile) const {
  RegistryKey target;
  if (!target.Create(platform::Hive::CurrentUser, key)) return;
  const std::string localName = platform::ReadProfileText(
      hostIniFile, kHostSection, "LocalFileNameDefault", "%CBFName%", kDefaultNameBuffer);
  const std::string sharedName =
      platform::ReadProfileText(hostIniFile, kHostSection, "SharedFileNameDefault",
                                "%CBFName% %BOM2% %Subtype%", kDefaultNameBuffer);
  const std::string documents = platform::DocumentsFolder() + "\\";

  MissingValues missing(target, key, legacyKey);
  auto localFolderType = missing.Legacy("SmartDirType");
  if (localFolderType) localFolderType = FolderTypeFromLegacy(*localFolderType);

  missing.MakeText("LocalFileName", "TitleExt1", localName);
  missing.MakeText("LocalFolder", "SmartDir", documents);
  missing.MakeNumber(
      "LocalFolderType", localFolderType,
      (localPartsItems & kWorkspaceFolder) != 0 ? kWorkspaceFolder : kAssemblyFolder);
  missing.MakeNumber("LocalStructure", std::nullopt, 0);
  missing.MakeText("SharedFileName", "TitleExt2", sharedName);
  missing.MakeText("SharedFolder", "StandardDir", documents);
  missing.MakeNumber("SharedStructure", missing.Legacy("StandardDirType"), 0);
  missing.MakeNumber(
      "SharedFolderType", std::nullopt,
      (sharedPartsItems & kContentLibraryFolder) != 0 ? kContentLibraryFolder : kUserFolder);
  missing.MakeNumber("ReplaceSpaces", missing.Legacy("ReplaceSpaces"), 0);
}

void FileNameSettings::ExportLegacyFileNameSettings() const {
  RegistryKey target;
  if (!target.Create(platform::Hive::CurrentUser, legacyKey)) return;
  for (const TextRow& row : kTexts) {
    if (const auto text = ReadText(key, row.name)) target.WriteString(row.legacyName, *text);
  }
  for (const ExportRow& row : kExportedNumbers) {
    const auto value = ReadNumber(key, row.name);
    const auto legacy = value ? row.toLegacy(*value) : std::nullopt;
    if (legacy) target.WriteDword(row.legacyName, *legacy);
  }
}

}  // namespace quillmar
