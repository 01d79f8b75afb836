#include "conversion/LayoutConverter.h"

#include <algorithm>

#include "base/Texts.h"
#include "conversion/FirstGearConverter.h"
#include "conversion/ShaftConverter.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kViewKeyword = "View";

struct KindRow {
  const char* dataFileType;
  ConverterKind kind;
};

constexpr KindRow kKinds[] = {
    {"SHAFT", ConverterKind::Shaft},  {"SHAFT2", ConverterKind::Shaft},
    {"SHAFT3", ConverterKind::Shaft}, {"GEAR1", ConverterKind::Gear1},
    {"GEAR2", ConverterKind::Gear2},  {"GEAR3", ConverterKind::Gear3},
};

ConverterKind KindOf(const std::string& dataFileType) {
  for (const KindRow& row : kKinds) {
    if (platform::EqualsNoCase(dataFileType, row.dataFileType)) return row.kind;
  }
  return ConverterKind::Default;
}

void SetView(VXProtocol& protocol, const std::string& viewKey) {
  protocol.PutViewKey(viewKey);
  protocol.PutKeyWord(section::kMain, kViewKeyword, viewKey);
}

}  // namespace

std::unique_ptr<LayoutConverter> MakeLayoutConverter(const std::string& dataFileType,
                                                     VXProtocol& protocol,
                                                     const ProtocolConverter& controller,
                                                     LayoutConverter::Protocols& newProtocols) {
  const ConverterKind kind = KindOf(dataFileType);
  switch (kind) {
    case ConverterKind::Shaft:
      return std::make_unique<ShaftConverter>(kind, protocol, controller, newProtocols);
    case ConverterKind::Gear1:
      return std::make_unique<FirstGearConverter>(kind, protocol, controller, newProtocols);
    default:
      return std::make_unique<ParameterConverter>(kind, protocol, controller, newProtocols);
  }
}

void LayoutConverter::MapViewKey(int fromMajor, int toMajor) {
  std::string dataFile;
  if (!protocol.GetKeyWord(section::kMain, keyword::kDataFile, dataFile)) return;
  const auto bar = dataFile.find('|');
  const std::string dataFileType = bar == std::string::npos ? dataFile : dataFile.substr(bar + 1);
  if (!LoadMapping(dataFileType, fromMajor, toMajor)) return;

  std::string viewKey;
  if (!protocol.GetViewKey(viewKey)) return;
  const std::string* newKeys = controller.Mapping().Find(viewKey);
  if (newKeys == nullptr) return;
  std::vector<std::string> viewKeys = SplitKeepingEmpty(*newKeys, ',');
  std::erase(viewKeys, std::string());
  if (viewKeys.empty()) return;
  SetView(protocol, viewKeys.front());
  if (viewKeys.size() > 1) SplitViews(viewKeys);
}

bool LayoutConverter::LoadMapping(const std::string& dataFileType, int fromMajor, int toMajor) {
  const std::string step = std::to_string(fromMajor) + "->" + std::to_string(toMajor);
  const std::string front = controller.ApplicationKey() + "_";
  ViewKeyMapping& mapping = controller.Mapping();
  return mapping.Load(kind, controller.IniPath(), front + dataFileType + "_" + step) ||
         mapping.Load(kind, controller.IniPath(), front + "Default_" + step);
}

// The protocol is closed while it is copied, so that the store has it complete; also when somebody
// else opened it, who finds it open again afterwards.
void LayoutConverter::SplitViews(const std::vector<std::string>& viewKeys) {
  const std::string id = protocol.GetProtocolID();
  const ProtocolContext& context = protocol.Context();
  VXProtocol::CloseById(context, id);
  for (std::size_t i = 1; i < viewKeys.size(); ++i) {
    newProtocols.push_back(std::make_unique<VXProtocol>(context));
    if (newProtocols.back()->Copy(id)) SetView(*newProtocols.back(), viewKeys[i]);
  }
  if (!VXProtocol::OpenById(context, id)) protocol.Open(id);
}

}  // namespace quillmar
