#include "parts/VXShaft.h"

namespace quillmar {

bool VXShaft::WantsDescription() { return true; }

bool VXShaft::InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  std::string modelPath;
  GetModelFilePath(modelPath);
  if (!MakeFileName(false, true)) {
    return Fail("Cannot insert parameter shaft - can't create filename", QM_HERE);
  }
  return services.driver.InsertShaft(protocol.GetProtocolID().c_str(), modelPath.c_str(),
                                     parameters.c_str(), connection.c_str(), filePath.c_str(),
                                     caption.c_str(), pairs.Get(), pairs.Count()) != 0 ||
         Fail("Cannot insert parameter part - SHAFT", QM_HERE);
}

bool VXShaft::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  return ChangeByState(connection, QM_HERE, [&] {
    std::string modelPath;
    GetModelFilePath(modelPath);
    if (services.driver.ChangeShaft(protocol.GetProtocolID().c_str(), modelPath.c_str(),
                                    parameters.c_str(), connection.c_str(), caption.c_str(),
                                    pairs.Get(), pairs.Count()) == 0) {
      return Fail("Cannot insert parameter part - SHAFT", QM_HERE);
    }
    return SendFeatureStates(QM_HERE);
  });
}

bool VXShaft::ReadBackFromCad() {
  StoreModelId();
  if (!ReadParametersBack(CadList::ShaftParameters)) return false;
  ReadFeatureStatesBack();
  return true;
}

}  // namespace quillmar
