#include "parts/VXCamPart.h"

#include <algorithm>
#include <cmath>

#include "base/Texts.h"
#include "platform/FloatingPoint.h"

namespace quillmar {
namespace {

constexpr double kRadiansPerDegree = 3.141592653589793 / 180.0;
// More points are no profile but damage, and reading them would keep the CAD waiting.
constexpr int kMaxPoints = 100000;

double ReadNumber(VXProtocol& protocol, const std::string& name) {
  std::string value;
  std::string unit;
  protocol.GetDataParam(name, value, unit);
  return ParseReal(value);
}

}  // namespace

bool VXCamPart::GetModelFilePath(std::string& path) {
  std::string modelId;
  protocol.GetModelID(modelId);
  path = LibraryModelPath(modelId);
  return true;
}

bool VXCamPart::CreatePartFile() { return true; }
bool VXCamPart::WantsDescription() { return true; }

void VXCamPart::LoadProfile() {
  const platform::StandardFloatingPoint scope;
  std::string text;
  std::string unit;
  protocol.GetDataParam("cPoint", text, unit);
  pointCount = std::max(ParseInt(text), 0);
  if (pointCount > kMaxPoints) {
    Fail("Too many points of a cam", QM_HERE);
    pointCount = 0;
  }
  first.assign(static_cast<std::size_t>(pointCount), 0.0);
  second = first;
  for (int i = 0; i < pointCount; ++i) {
    const std::string number = std::to_string(i + 1);
    const double angle = ReadNumber(protocol, "a_" + number) * kRadiansPerDegree;
    const double length = ReadNumber(protocol, "l_" + number);
    first[static_cast<std::size_t>(i)] = length * std::sin(angle);
    second[static_cast<std::size_t>(i)] = length * std::cos(angle);
  }
  protocol.GetDataParam("bv", text, baseUnit);
  baseValue = ParseReal(text);
}

bool VXCamPart::InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) {
  LoadProfile();
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  std::string modelPath;
  GetModelFilePath(modelPath);
  if (!MakeFileName(false, true)) {
    return Fail("Cannot insert parameter cam - can't create filename", QM_HERE);
  }
  const CadDriverTable& driver = services.driver;
  if (!driver.InsertCamPartEx) return InsertByProfile(connection, pairs);
  return driver.InsertCamPartEx(protocol.GetProtocolID().c_str(), parameters.c_str(),
                                connection.c_str(), filePath.c_str(), modelPath.c_str(),
                                caption.c_str(), pairs.Get(), pairs.Count()) != 0 ||
         Fail("Cannot insert CAMEx part", QM_HERE);
}

bool VXCamPart::InsertByProfile(const std::string& connection, const ExtDataPairs& pairs) {
  const CadDriverTable& driver = services.driver;
  if (!driver.InsertCamPart) {
    return Fail("CAD doesn't support \"InsertCamPart\" function", QM_HERE);
  }
  return driver.InsertCamPart(protocol.GetProtocolID().c_str(), pointCount, first.data(),
                              second.data(), baseValue, baseUnit.c_str(), connection.c_str(),
                              filePath.c_str(), caption.c_str(), pairs.Get(), pairs.Count()) != 0 ||
         Fail("Cannot insert CAM part", QM_HERE);
}

bool VXCamPart::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  LoadProfile();
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  return ChangeByState(connection, QM_HERE, [&] {
    return ChangeByDriver(parameters, WithFreshIdentity(connection), pairs) &&
           SendFeatureStates(QM_HERE);
  });
}

bool VXCamPart::ChangeByDriver(const std::string& parameters, const std::string& connection,
                               const ExtDataPairs& pairs) {
  const CadDriverTable& driver = services.driver;
  const char* id = protocol.GetProtocolID().c_str();
  if (driver.ChangeCamPartEx) {
    return driver.ChangeCamPartEx(id, parameters.c_str(), connection.c_str(), caption.c_str(),
                                  pairs.Get(), pairs.Count()) != 0 ||
           Fail("Cannot change CAM part", QM_HERE);
  }
  if (!driver.ChangeCamPart) {
    return Fail("CAD doesn't support \"ChangeCamPart\" function", QM_HERE);
  }
  return driver.ChangeCamPart(id, pointCount, first.data(), second.data(), baseValue,
                              baseUnit.c_str(), connection.c_str(), caption.c_str(), pairs.Get(),
                              pairs.Count()) != 0 ||
         Fail("Cannot change CAM part", QM_HERE);
}

bool VXCamPart::ReadBackFromCad() {
  StoreModelId();
  if (!ReadParametersBack(CadList::Parameters)) return false;
  ReadFeatureStatesBack();
  return true;
}

}  // namespace quillmar
