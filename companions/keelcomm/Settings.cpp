#include "keelcomm/Settings.h"

#include "keelcomm/ModulePath.h"
#include "platform/Profile.h"

namespace quillmar::keelcomm {
namespace {

constexpr char kIniFile[] = "Keelcomm.ini";
constexpr char kSection[] = "Store";
constexpr char kDefaultDatabase[] = "Protocols.db";
constexpr int kDefaultWait = 2000;
constexpr std::size_t kLongestPath = 1024;

bool HasDriveOrServer(const std::string& path) {
  return (path.size() > 1 && path[1] == ':') || path.starts_with("\\\\");
}

}  // namespace

Settings ReadSettings() {
  const std::string folder = companion::ThisModuleFolder();
  if (folder.empty()) throw StoreError("the folder of the library is not known");
  const std::string ini = folder + kIniFile;
  Settings settings;
  settings.file =
      platform::ReadProfileText(ini, kSection, "Database", kDefaultDatabase, kLongestPath);
  if (!HasDriveOrServer(settings.file)) settings.file = folder + settings.file;
  settings.use.busyMilliseconds = platform::ReadProfileInt(ini, kSection, "Wait", kDefaultWait);
  settings.use.isFlushed = platform::ReadProfileInt(ini, kSection, "Flush", 1) != 0;
  return settings;
}

}  // namespace quillmar::keelcomm
