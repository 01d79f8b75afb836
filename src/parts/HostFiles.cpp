#include "parts/HostFiles.h"

#include "base/Texts.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kFilePrefix = "HXD";
constexpr const char* kPartNamePrefix = "SP";
constexpr const char* kLayersFile = "\\Layers.ini";
constexpr const char* kMillimetre = "mm";
constexpr double kInchesPerMillimetre = 0.03937007874015748;

constexpr const char* kNoUnit = "nd";

struct SettingRow {
  const char* section;
  const char* keyword;
  const char* value;
};

// What every drawing is drawn by, in the order of writing. A null value is one that this module
// works out for the part.
constexpr const char* kFromView = nullptr;
constexpr SettingRow kSettings[] = {
    {section::kPosition, "Origin", "0.0 0.0 0.0"}, {section::kLtParam, "StdScale", "1"},
    {section::kLtParam, "UnitScale", "1"},         {section::kLtParam, "AxisElev", "100"},
    {section::kLtParam, "UseSolids", kFromView},   {section::kLtParam, "SolidRatio", "0"},
};

struct ParameterRow {
  const char* name;
  const char* value;
};

// Height, angle (half a turn, in radians) and direction of texts.
constexpr ParameterRow kTextParameters[] = {
    {"xxht", "3.5"},
    {"xxangle", "3.1415927"},
    {"xxrightdir", "1"},
};

std::string DrawingUnit(VXProtocol& protocol) {
  std::string unit;
  protocol.GetGlobalData(global::kPartUnit, unit);
  if (unit.empty()) protocol.GetUnit(unit);
  return unit.empty() ? kMillimetre : platform::LowerCase(unit);
}

// The overlap is held in millimetres, the drawing wants its own unit.
std::string AxisLength(double overlap, const std::string& unit) {
  return FormatNumber(overlap * (unit == kMillimetre ? 1.0 : kInchesPerMillimetre));
}

void WriteSettings(const PartServices& services, VXProtocol& protocol, const std::string& axis,
                   const std::string& path) {
  std::string visible;
  protocol.GetKeyWord(section::kView, keyword::kVisibled, visible);
  for (const SettingRow& row : kSettings) {
    protocol.PutKeyWord(row.section, row.keyword,
                        row.value == kFromView ? visible.c_str() : row.value);
  }
  protocol.PutKeyWord(section::kLtParam, "AxisLenght", axis);
  for (const ParameterRow& row : kTextParameters) {
    protocol.PutDataParam(row.name, row.value, kNoUnit);
  }
  protocol.PutKeyWord(section::kFiles, keyword::kOutput, path);
  protocol.PutKeyWord(section::kFiles, "Layers", services.paths.ModuleFolder() + kLayersFile);
}

void NameOnce(UniqueIds& ids, VXProtocol& protocol) {
  std::string name;
  if (protocol.GetPartName(name) && !name.empty()) return;
  protocol.PutPartName(ids.MakeUniqueId(kPartNamePrefix));
}

}  // namespace

bool AnnounceAndReopen(CalcHost& host, VXProtocol& protocol) {
  const std::string protocolId = protocol.GetProtocolID();
  protocol.Close();
  host.AnnounceProtocol(protocolId);
  return protocol.Open(protocolId);
}

std::string MakeHostFile(const std::string& extension) {
  return platform::MakeTempFile(platform::TempFolder(), kFilePrefix, extension);
}

bool IsMetric(VXProtocol& protocol) {
  std::string unit;
  protocol.GetUnit(unit);
  return unit == kMillimetre;
}

bool DrawPartFile(const PartServices& services, VXProtocol& protocol, const std::string& extension,
                  const SourceStamp& source, std::string& path) {
  const std::string axis = AxisLength(services.axisOverlap, DrawingUnit(protocol));
  path = MakeHostFile(extension);
  if (path.empty()) return false;
  WriteSettings(services, protocol, axis, path);
  NameOnce(services.ids, protocol);
  if (AnnounceAndReopen(services.host, protocol) &&
      services.host.WriteFile(protocol.GetProtocolID(), services.driver.fileType2d)) {
    return true;
  }
  platform::RemoveFile(path);
  path.clear();
  services.errors.ReportError("Cannot save part.", source);
  return false;
}

}  // namespace quillmar
