#include "parts/VX2dPart.h"

#include "base/Texts.h"
#include "parts/HostFiles.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr int kDxfFiles = 2;

std::string DrawingExtension(int fileType) {
  return fileType == kDxfFiles ? "dxf" : kOtherExtension;
}

}  // namespace

bool VX2dPart::WantsDescription() { return true; }

bool VX2dPart::BeforeConnect() {
  ConvertProtocol(services.session, services.converter.get(), protocol, kOldMajor);
  services.host.AnnounceProtocol(protocol.GetProtocolID());
  return true;
}

bool VX2dPart::CreatePartFile() {
  if (services.session.modelFileKind == 0) return true;
  if (!DrawPartFile(services, protocol, DrawingExtension(services.driver.fileType2d), QM_HERE,
                    drawingFile)) {
    return false;
  }
  ReadPlace();
  return true;
}

void VX2dPart::ReadPlace() {
  metric = IsMetric(protocol) ? 1 : 0;
  std::string point;
  protocol.GetKeyWord(section::kPosition, "InfPoint", point);
  const auto blank = point.find(' ');
  insertX = ParseReal(point.substr(0, blank));
  insertY = blank == std::string::npos ? 0.0 : ParseReal(point.substr(blank + 1));
  level = 0.0;
  int visible = 0;
  std::string text;
  if (protocol.IsVisible(visible) && visible == 1 && protocol.GetLevel(text)) {
    level = ParseReal(text);
  }
}

bool VX2dPart::InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) {
  return services.driver.Insert2dPart(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                      connection.c_str(), metric, pairs.Get(), pairs.Count(),
                                      insertX, insertY, level) != 0;
}

bool VX2dPart::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  return ChangeByState(connection, QM_HERE, [&] {
    return services.driver.Change2dPart(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                        connection.c_str(), metric, pairs.Get(), pairs.Count(),
                                        insertX, insertY, level) != 0;
  });
}

}  // namespace quillmar
