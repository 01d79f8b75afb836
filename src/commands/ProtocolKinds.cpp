#include "commands/ProtocolKinds.h"

#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

struct KindRow {
  const char* dataFile;
  ProtocolKind kind;
};

constexpr KindRow kKinds[] = {
    {"userpart", ProtocolKind::UserPart},
    {"asmpart", ProtocolKind::Assembly},
    {kGroupDataFile, ProtocolKind::Group},
};

}  // namespace

ProtocolKind KindOf(VXProtocol& protocol) {
  std::string dataFile;
  protocol.GetDataFileName(dataFile);
  for (const KindRow& row : kKinds) {
    if (platform::EqualsNoCase(dataFile, row.dataFile)) return row.kind;
  }
  return ProtocolKind::Calculation;
}

}  // namespace quillmar
