// Brings protocols that were written in an older layout to another one, in place: data parameters
// by the kind of the calculation, the version, and the view key by the mapping file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "conversion/ViewKeyMapping.h"
#include "protocol/VXProtocol.h"
#include "session/CadSession.h"

namespace quillmar {

// Major versions: the layout that calculations write today, and the one before it.
inline constexpr int kCurrentMajor = 2;
inline constexpr int kOldMajor = 1;

class ProtocolConverter {
 public:
  // Made at login: `applicationKey` names the sections of the mapping file. The user's "QmarMode"
  // is read here. `mapping` outlives all converters.
  ProtocolConverter(std::string applicationKey, std::string iniPath, ViewKeyMapping& mapping);

  // Major 0 means the current one. The mapping file may split the protocol: the further ones are
  // appended to `newProtocols`. 1 plus their number; 0 when the protocol does not say what kind
  // of calculation it is. A protocol whose version the store does not tell stays as it is.
  int Convert(VXProtocol& protocol, int targetMajor,
              std::vector<std::unique_ptr<VXProtocol>>& newProtocols, int targetMinor);

  const std::string& ApplicationKey() const { return applicationKey; }
  const std::string& IniPath() const { return iniPath; }
  bool QmarMode() const { return qmarMode; }
  ViewKeyMapping& Mapping() const { return mapping; }

 private:
  std::string applicationKey;
  std::string iniPath;
  ViewKeyMapping& mapping;
  bool qmarMode = false;
};

// The entry for everybody who is about to work on a protocol. A session of the group manager
// converts nothing and gets 1; before the first login there is no converter, and the result is 0.
int ConvertProtocol(const CadSession& session, ProtocolConverter* converter, VXProtocol& protocol,
                    int targetMajor);

}  // namespace quillmar
