#include "parts/PhysicalProperties.h"

#include <algorithm>
#include <iterator>

#include "base/Texts.h"
#include "parts/CadListReaders.h"
#include "parts/ParameterLists.h"

namespace quillmar {
namespace {

constexpr int kTypesWithBody[] = {2, 3, 9, 10, 14};
constexpr const char* kNoUnit = "ND";

struct PropertyRow {
  const char* name;
  bool neverNegative;  // a negative one means that the CAD could not measure it
};

// In the order in which the driver gives them.
constexpr PropertyRow kProperties[] = {
    {"VXP_PP_CenterOfMassX", false}, {"VXP_PP_CenterOfMassY", false},
    {"VXP_PP_CenterOfMassZ", false}, {"VXP_PP_Volume", true},
    {"VXP_PP_Area", true},           {"VXP_PP_Mass", true},
    {"VXP_PP_MomXX", false},         {"VXP_PP_MomYY", false},
    {"VXP_PP_MomZZ", false},         {"VXP_PP_MomXY", false},
    {"VXP_PP_MomXZ", false},         {"VXP_PP_MomYZ", false},
};

bool HasBody(VXProtocol& protocol) {
  int type = 0;
  return protocol.GetTypeOfPart(type) &&
         std::find(std::begin(kTypesWithBody), std::end(kTypesWithBody), type) !=
             std::end(kTypesWithBody);
}

// A list of the CAD's values of one group, when the driver offers it.
void ReadGroup(const PartServices& services, VXProtocol& protocol, CadList list,
               const char* group) {
  std::string text;
  if (!OffersList(services.driver, list) ||
      !ReadCadList(services.driver, services.errors, list, protocol.GetProtocolID(), text)) {
    return;
  }
  ApplyParameterList(protocol, services.session, text, group);
}

void ReadSingleProperties(const PartServices& services, VXProtocol& protocol) {
  double v[std::size(kProperties)] = {};
  if (services.driver.GetPhysicalProperties(protocol.GetProtocolID().c_str(), &v[0], &v[1], &v[2],
                                            &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9], &v[10],
                                            &v[11]) == 0) {
    return;
  }
  for (std::size_t i = 0; i < std::size(kProperties); ++i) {
    if (kProperties[i].neverNegative && v[i] < 0.0) continue;
    protocol.PutDataParam(kProperties[i].name, FormatNumber(v[i]), kNoUnit);
  }
}

}  // namespace

void ReadPhysicalProperties(const PartServices& services, VXProtocol& protocol) {
  if (!HasBody(protocol)) return;
  ReadGroup(services, protocol, CadList::ReferenceDims, kReferenceDims);
  if (OffersList(services.driver, CadList::PhysicalPropertiesEx)) {
    ReadGroup(services, protocol, CadList::PhysicalPropertiesEx, kPhysicalProperties);
  } else {
    ReadSingleProperties(services, protocol);
  }
}

void PartStateUpdate(const PartServices& services, VXProtocol& protocol) {
  ReadGroup(services, protocol, CadList::PartsVisibility, kFeatureStates);
}

void ReadFeatureStates(const PartServices& services, VXProtocol& protocol) {
  ReadGroup(services, protocol, CadList::FeaturesState, kFeatureStates);
}

void SendPartsVisibility(const PartServices& services, VXProtocol& protocol) {
  if (!services.driver.SetPartsVisibility) return;
  std::string states;
  BuildParameterList(protocol, ListForm::Values, kFeatureStates, states);
  services.driver.SetPartsVisibility(protocol.GetProtocolID().c_str(), states.c_str());
}

}  // namespace quillmar
