#include "parts/VXFormat.h"

#include "base/Texts.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

bool VXFormat::CreatePartFile() {
  if (!VXSymbol::CreatePartFile()) return false;
  std::string value;
  std::string unit;
  protocol.GetDataParam(parameter::kScale, value, unit);
  scale = ParseReal(value);
  return true;
}

bool VXFormat::InsertIntoCad(const std::string& connection, const ExtDataPairs&) {
  return services.driver.InsertFormat(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                      connection.c_str(), metric, namePrefix.c_str(), scale) != 0;
}

bool VXFormat::ChangeInCad(const std::string& connection, const ExtDataPairs&) {
  return ChangeByState(connection, QM_HERE, [&] {
    return services.driver.ChangeFormat(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                        connection.c_str(), metric, namePrefix.c_str(), scale) != 0;
  });
}

}  // namespace quillmar
