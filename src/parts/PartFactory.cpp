#include "parts/PartFactory.h"

#include "parts/VX2dPart.h"
#include "parts/VXAssembly.h"
#include "parts/VXCalcPart.h"
#include "parts/VXCamPart.h"
#include "parts/VXFeaturePart.h"
#include "parts/VXFormat.h"
#include "parts/VXModelPart.h"
#include "parts/VXNamedProt.h"
#include "parts/VXParamPart.h"
#include "parts/VXShaft.h"
#include "parts/VXSymbol.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

using Factory = std::unique_ptr<VXPart> (*)(const PartServices& services, VXProtocol& protocol);

template <class Kind>
std::unique_ptr<VXPart> Make(const PartServices& services, VXProtocol& protocol) {
  return std::make_unique<Kind>(services, protocol);
}

struct PartClassRow {
  int typeOfPart;
  Factory factory;
};

constexpr PartClassRow kPartClassRegistry[] = {
    {3, Make<VXModelPart>}, {2, Make<VXParamPart>},   {4, Make<VXCalcPart>},
    {10, Make<VXAssembly>}, {9, Make<VXShaft>},       {5, Make<VXModelPart>},
    {6, Make<VXModelPart>}, {7, Make<VXFeaturePart>}, {8, Make<VXFeaturePart>},
    {1, Make<VX2dPart>},    {13, Make<VXSymbol>},     {12, Make<VXFormat>},
    {14, Make<VXCamPart>},
};

// Groups are told by their data file, whatever their type.
std::unique_ptr<VXPart> MakePart(const PartServices& services, VXProtocol& protocol) {
  std::string dataFile;
  protocol.GetDataFileName(dataFile);
  if (platform::EqualsNoCase(dataFile, kGroupDataFile))
    return Make<VXNamedProt>(services, protocol);
  int type = 0;
  if (!protocol.GetTypeOfPart(type)) return nullptr;
  for (const PartClassRow& row : kPartClassRegistry) {
    if (row.typeOfPart == type) return row.factory(services, protocol);
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<VXPart> CreatePartForProtocol(const PartServices& services, VXProtocol& protocol,
                                              bool mustSucceed) {
  std::unique_ptr<VXPart> part = MakePart(services, protocol);
  if (!part) return nullptr;
  const bool flagKept = part->DetermineLocalFlag();
  part->BuildCaption();
  if (mustSucceed && !flagKept) return nullptr;
  return part;
}

}  // namespace quillmar
