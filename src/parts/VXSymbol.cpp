#include "parts/VXSymbol.h"

#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kUsualPrefix = "SP";

}  // namespace

bool VXSymbol::CreatePartFile() {
  if (!VX2dPart::CreatePartFile()) return false;
  // A prefix that is there counts, also an empty one: names without a prefix.
  if (!protocol.GetGlobalData(global::kNamePrefix, namePrefix)) namePrefix = kUsualPrefix;
  return true;
}

bool VXSymbol::InsertIntoCad(const std::string& connection, const ExtDataPairs&) {
  return services.driver.InsertSymbol(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                      connection.c_str(), metric, namePrefix.c_str()) != 0;
}

bool VXSymbol::ChangeInCad(const std::string& connection, const ExtDataPairs&) {
  return ChangeByState(connection, QM_HERE, [&] {
    return services.driver.ChangeSymbol(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                        connection.c_str(), metric, namePrefix.c_str()) != 0;
  });
}

}  // namespace quillmar
