#include "userparts/DataValues.h"

namespace quillmar {
namespace {

constexpr const char* kComma = "<VXCOMMA>";

void AppendValue(VXProtocol& protocol, const std::string& name, std::string& values) {
  std::string value;
  std::string unit;
  if (!protocol.GetDataParam(name, value, unit)) return;
  if (!values.empty()) values += ',';
  values += name + "," + ReplaceAll(value, ",", kComma) + "," + unit;
}

}  // namespace

std::string GetDataValues(const PartServices& services, const std::string& reference,
                          const std::string& names) {
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return {};
  std::string values;
  if (protocol.PutBufferFromReference(reference, Markers::Standard)) {
    for (const std::string& name : SplitKeepingEmpty(names, ',')) {
      if (!name.empty()) AppendValue(protocol, name, values);
    }
  }
  protocol.Erase();
  return values;
}

}  // namespace quillmar
