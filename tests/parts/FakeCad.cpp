#include "FakeCad.h"

#include <cstring>

#include "Journal.h"

namespace quillmar::test {
namespace {

int Note(const std::string& name, const std::string& arguments) {
  Journal::Get().Note("cad " + name + " " + arguments);
  return FakeCad::Get().refuses.contains(name) ? 0 : 1;
}

// The list functions in two steps: a size that is asked for makes the first call fail.
int Answer(const std::string& name, const std::string& arguments, char* text, int* size) {
  if (Note(name, arguments) == 0) return *size = 0;
  auto& sizes = FakeCad::Get().sizes;
  if (const auto wanted = sizes.find(name); wanted != sizes.end()) {
    *size = wanted->second;
    sizes.erase(wanted);
    return 0;
  }
  auto& texts = FakeCad::Get().texts;
  const auto special = texts.find(name + " " + arguments);
  const std::string& answer = special != texts.end() ? special->second : texts[name];
  if (static_cast<int>(answer.size()) > *size) {
    *size = static_cast<int>(answer.size());
    return 0;
  }
  std::memcpy(text, answer.c_str(), answer.size() + 1);
  *size = static_cast<int>(answer.size());
  return 1;
}

#define QM_FAKE(need, name, result, parameters, arguments) \
  result QM_CDECL Fake##name parameters { return Note(#name, Joined arguments); }
QM_CAD_FUNCTIONS(QM_FAKE)
#undef QM_FAKE

#define QM_FAKE_LIST(name)                                          \
  int QM_CDECL List##name(const char* key, char* text, int* size) { \
    return Answer(#name, key, text, size);                          \
  }
QM_FAKE_LIST(GetProtocol)
QM_FAKE_LIST(GetParameterList)
QM_FAKE_LIST(GetShaftParameterList)
QM_FAKE_LIST(GetPhysicalPropertiesEx)
QM_FAKE_LIST(GetFeaturesState)
QM_FAKE_LIST(GetReferenceDims)
QM_FAKE_LIST(GetPartsVisibility)
#undef QM_FAKE_LIST

int QM_CDECL ListGetParameterListEx(const char* key, char* text, int* size, int first, int second) {
  return Answer("GetParameterListEx", Joined(key, first, second), text, size);
}

int QM_CDECL FillConfiguration(const char* protocolId, char* active, int capacity, char* list) {
  int size = capacity;
  if (Answer("GetConfiguration", Joined(protocolId, capacity), list, &size) == 0) return 0;
  std::strcpy(active, FakeCad::Get().texts["ActiveConfiguration"].c_str());
  return 1;
}

int QM_CDECL FillProperties(const char* key, double* x, double* y, double* z, double* volume,
                            double* area, double* mass, double* xx, double* yy, double* zz,
                            double* xy, double* xz, double* yz) {
  double* outputs[] = {x, y, z, volume, area, mass, xx, yy, zz, xy, xz, yz};
  for (int i = 0; i < 12; ++i) *outputs[i] = FakeCad::Get().properties[i];
  return Note("GetPhysicalProperties", key);
}

int QM_CDECL ChooseFile(int open, const char* name, int reserved, const char* filter,
                        const char* title, char* path, int size) {
  int room = size - 1;
  return Answer("ShowFileDialog", Joined(open, name, reserved, filter, title, size), path, &room);
}

int QM_CDECL KeepCamProfile(const char* protocolId, int pointCount, const double* first,
                            const double* second, double baseValue, const char* baseUnit,
                            const char* connection, const char* filePath, const char* caption,
                            const ExtDataPair*, int count) {
  auto& profile = FakeCad::Get().camProfile;
  profile.assign(first, first + pointCount);
  profile.insert(profile.end(), second, second + pointCount);
  return Note("InsertCamPart", Joined(protocolId, pointCount, baseValue, baseUnit, connection,
                                      filePath, caption, count));
}

// The functions that do more than note the call.
void BindAnswering(CadDriverTable& driver) {
  driver.GetProtocol.pointer = ListGetProtocol;
  driver.GetParameterList.pointer = ListGetParameterList;
  if (driver.GetParameterListEx) driver.GetParameterListEx.pointer = ListGetParameterListEx;
  if (driver.GetShaftParameterList)
    driver.GetShaftParameterList.pointer = ListGetShaftParameterList;
  if (driver.GetPhysicalPropertiesEx) {
    driver.GetPhysicalPropertiesEx.pointer = ListGetPhysicalPropertiesEx;
  }
  if (driver.GetFeaturesState) driver.GetFeaturesState.pointer = ListGetFeaturesState;
  if (driver.GetReferenceDims) driver.GetReferenceDims.pointer = ListGetReferenceDims;
  if (driver.GetPartsVisibility) driver.GetPartsVisibility.pointer = ListGetPartsVisibility;
  if (driver.GetConfiguration) driver.GetConfiguration.pointer = FillConfiguration;
  if (driver.GetPhysicalProperties) driver.GetPhysicalProperties.pointer = FillProperties;
  if (driver.ShowFileDialog) driver.ShowFileDialog.pointer = ChooseFile;
  if (driver.InsertCamPart) driver.InsertCamPart.pointer = KeepCamProfile;
}

}  // namespace

FakeCad& FakeCad::Get() {
  static FakeCad cad;
  return cad;
}

void BindRequired(CadDriverTable& driver) {
  driver = {};
#define QM_BIND_REQUIRED(name) driver.name.pointer = Fake##name;
#define QM_BIND_OPTIONAL(name)
#define QM_BIND(need, name, result, parameters, arguments) QM_BIND_##need(name)
  QM_CAD_FUNCTIONS(QM_BIND)
#undef QM_BIND
#undef QM_BIND_REQUIRED
#undef QM_BIND_OPTIONAL
  BindAnswering(driver);
}

void Offer(CadDriverTable& driver, const std::string& wanted) {
#define QM_OFFER(need, name, result, parameters, arguments) \
  if (wanted == #name) driver.name.pointer = Fake##name;
  QM_CAD_FUNCTIONS(QM_OFFER)
#undef QM_OFFER
  BindAnswering(driver);
}

}  // namespace quillmar::test
