#include "parts/VXFeaturePart.h"

namespace quillmar {
namespace {

constexpr int kTextFeatureFiles = 2;

}  // namespace

bool VXFeaturePart::GetModelFilePath(std::string& path) {
  std::string modelId;
  protocol.GetModelID(modelId);
  path = LibraryModelPath(modelId);
  return true;
}

bool VXFeaturePart::CreatePartFile() { return true; }
bool VXFeaturePart::WantsDescription() { return false; }
std::string VXFeaturePart::GetFileExtension() { return services.session.featureExt; }
std::string VXFeaturePart::GetFileTypeName() { return services.texts.GetText(kTextFeatureFiles); }

std::string VXFeaturePart::DescriptionSuffix() {
  std::string description;
  protocol.GetViewDescription(description);
  return " (" + description + ")";
}

bool VXFeaturePart::InsertIntoCad(const std::string& connection, const ExtDataPairs&) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  std::string modelPath;
  GetModelFilePath(modelPath);
  if (!MakeFileName(false, true)) {
    return Fail("Cannot insert parameter feature - can't create filename", QM_HERE);
  }
  return services.driver.InsertFeature(modelPath.c_str(), protocol.GetProtocolID().c_str(),
                                       connection.c_str(), filePath.c_str(), caption.c_str(),
                                       parameters.c_str()) != 0 ||
         Fail("Cannot insert parameter feature", QM_HERE);
}

bool VXFeaturePart::ChangeInCad(const std::string& connection, const ExtDataPairs&) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  return ChangeByState(connection, QM_HERE, [&] {
    std::string modelPath;
    GetModelFilePath(modelPath);
    return services.driver.ChangeFeature(modelPath.c_str(), protocol.GetProtocolID().c_str(),
                                         connection.c_str(), caption.c_str(),
                                         parameters.c_str()) != 0 ||
           Fail("Cannot update feature part", QM_HERE);
  });
}

bool VXFeaturePart::ReadBackFromCad() {
  StoreModelId();
  return ReadParametersBack(CadList::Parameters);
}

}  // namespace quillmar
