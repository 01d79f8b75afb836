#include "conversion/ProtocolConverter.h"

#include <utility>

#include "base/InstallationPaths.h"
#include "base/RegistryKey.h"
#include "conversion/LayoutConverter.h"

namespace quillmar {
namespace {

bool ReadQmarMode() {
  RegistryKey key;
  return key.Open(platform::Hive::CurrentUser, GetModuleRegistryKey(true) + "VXcSE") &&
         key.ReadString("QmarMode") == "1";
}

}  // namespace

ProtocolConverter::ProtocolConverter(std::string key, std::string file, ViewKeyMapping& table)
    : applicationKey(std::move(key)),
      iniPath(std::move(file)),
      mapping(table),
      qmarMode(ReadQmarMode()) {}

int ProtocolConverter::Convert(VXProtocol& protocol, int targetMajor,
                               std::vector<std::unique_ptr<VXProtocol>>& newProtocols,
                               int targetMinor) {
  int fromMajor = 0;
  int fromMinor = 0;
  const bool isVersionKnown = protocol.GetVersion(fromMajor, fromMinor);
  const int toMajor = targetMajor == 0 ? kCurrentMajor : targetMajor;
  std::string dataFileType;
  if (!protocol.GetDataFileName(dataFileType)) return 0;
  if (!isVersionKnown) return 1;
  MakeLayoutConverter(dataFileType, protocol, *this, newProtocols)
      ->Convert(fromMajor, toMajor, fromMinor, targetMinor);
  return 1 + static_cast<int>(newProtocols.size());
}

int ConvertProtocol(const CadSession& session, ProtocolConverter* converter, VXProtocol& protocol,
                    int targetMajor) {
  if (session.groupManager) return 1;
  if (converter == nullptr) return 0;
  std::vector<std::unique_ptr<VXProtocol>> newProtocols;
  return converter->Convert(protocol, targetMajor, newProtocols, 0);
}

}  // namespace quillmar
