#include "parts/VXModelPart.h"

#include "parts/HostFiles.h"

namespace quillmar {
namespace {

struct FormatRow {
  int fileType;
  const char* extension;
};

constexpr FormatRow kFormats[] = {{7, "c3d"}, {8, "c3p"}};

std::string ModelExtension(int fileType) {
  for (const FormatRow& row : kFormats) {
    if (row.fileType == fileType) return row.extension;
  }
  return kOtherExtension;
}

}  // namespace

bool VXModelPart::WantsDescription() { return true; }

bool VXModelPart::CreatePartFile() {
  return services.session.modelFileKind == 0 ||
         DrawPartFile(services, protocol, ModelExtension(services.driver.fileType2d), QM_HERE,
                      drawingFile);
}

bool VXModelPart::InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) {
  return MakeFileName(false, true) &&
         services.driver.InsertPart(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                    connection.c_str(), smartPart, filePath.c_str(),
                                    caption.c_str(), pairs.Get(), pairs.Count()) != 0;
}

bool VXModelPart::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  return ChangeByState(connection, QM_HERE, [&] {
    const std::string newConnection = WithFreshIdentity(connection);
    return MakeFileName(true, HasOtherModel()) &&
           services.driver.ChangePart(drawingFile.c_str(), protocol.GetProtocolID().c_str(),
                                      newConnection.c_str(), smartPart, filePath.c_str(),
                                      caption.c_str(), pairs.Get(), pairs.Count()) != 0;
  });
}

}  // namespace quillmar
