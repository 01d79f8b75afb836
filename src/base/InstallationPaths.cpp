#include "base/InstallationPaths.h"

#include "base/RegistryKey.h"
#include "platform/Files.h"
#include "platform/Modules.h"
#include "quillmar/CalculationHost.h"

namespace quillmar {
namespace {

constexpr const char* kModuleKey = "Software\\Kestrova\\Vantorel\\RegistryVersion11.0\\Brastolinex";
constexpr const char* kSuiteFolderName = "\\Fendrake";
constexpr const char* kCommonFolderName = "\\Varda";
constexpr const char* kHostServerKey =
    "SOFTWARE\\Classes\\CLSID\\" QM_HOST_CLASS_ID "\\LocalServer32";
constexpr const char* kWindowsVersionKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
constexpr std::size_t kPathBuffer = 261;

// Cuts the last part of a path with its backslash; empty when there is no backslash.
std::string ParentOf(const std::string& path) {
  const auto at = path.rfind('\\');
  return at == std::string::npos ? std::string() : path.substr(0, at);
}

std::string ReadMachinePath(const std::string& key, const std::string& name) {
  RegistryKey registry;
  std::string path;
  if (!registry.Open(platform::Hive::LocalMachine, key)) return path;
  if (!registry.ReadString(name, path) || path.size() >= kPathBuffer) path.clear();
  return path;
}

// The local server's registered folder. A value without a backslash is taken as it is.
std::string RegisteredSuiteFolder() {
  const std::string server = ReadMachinePath(kHostServerKey, "");
  const auto at = server.rfind('\\');
  return at == std::string::npos ? server : server.substr(0, at);
}

}  // namespace

std::string GetModuleRegistryKey(bool withBackslash) {
  return withBackslash ? std::string(kModuleKey) + "\\" : std::string(kModuleKey);
}

InstallationPaths::InstallationPaths(QmModule module)
    : self(module), modulePath(platform::ModulePath(module)), moduleFolder(ParentOf(modulePath)) {
  const auto dot = modulePath.rfind('.');
  const bool hasExtension = dot != std::string::npos && dot > moduleFolder.size();
  profileFile = (hasExtension ? modulePath.substr(0, dot) : modulePath) + ".ini";
}

std::string InstallationPaths::GetSuiteFolder(bool registryOnly) const {
  if (registryOnly) return RegisteredSuiteFolder();
  const std::string beside = ParentOf(moduleFolder);
  for (const std::string& root : {beside, ParentOf(beside)}) {
    const std::string folder = root + kSuiteFolderName;
    if (platform::FileExists(folder + "\\" QM_HOST_PROGRAM)) return folder;
  }
  return RegisteredSuiteFolder();
}

std::string InstallationPaths::GetCommonFolder() const {
  std::string folder = ReadMachinePath(kWindowsVersionKey, "CommonFilesDir");
  if (!folder.empty() && folder.back() == '\\') folder.pop_back();
  return folder + kCommonFolderName;
}

}  // namespace quillmar
