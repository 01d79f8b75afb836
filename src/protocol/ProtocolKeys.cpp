// The fixed keys of a protocol: thin accessors with their conversions and defaults.

#include "protocol/ProtocolVocabulary.h"
#include "protocol/VXProtocol.h"

namespace quillmar {

bool VXProtocol::GetCadx(TextRef key, std::string& value) {
  return GetKeyWord(section::kCadx, key, value);
}

bool VXProtocol::PutCadx(TextRef key, TextRef value) {
  return PutKeyWord(section::kCadx, key, value);
}

bool VXProtocol::EraseCadx(TextRef key) { return EraseKeyWord(section::kCadx, key); }

bool VXProtocol::GetTypeOfPart(int& type) {
  std::string text;
  if (!GetGlobalData(global::kTypeOfPart, text)) return false;
  type = ParseInt(text);
  return true;
}

bool VXProtocol::SetTypeOfPart(int type) {
  return PutGlobalData(global::kTypeOfPart, std::to_string(type));
}

bool VXProtocol::GetBom(int number, std::string& text) {
  return GetGlobalData("Bom" + std::to_string(number), text);
}

bool VXProtocol::GetPartName(std::string& name) { return GetCadx(keyword::kPartName, name); }

bool VXProtocol::PutPartName(TextRef name) { return PutCadx(keyword::kPartName, name); }

bool VXProtocol::GetUnit(std::string& unit) { return GetGlobalData(global::kUnit, unit); }

std::string VXProtocol::GetUnitText() {
  std::string isMm;
  if (!GetGlobalData(global::kUnitIsmm, isMm)) return "mm";
  return ParseInt(isMm) == 1 ? "mm" : "in";
}

bool VXProtocol::GetDriver(std::string& driver) {
  return GetKeyWord(section::kView, keyword::kDriver, driver);
}

bool VXProtocol::GetViewData(std::string& data) {
  return GetKeyWord(section::kView, keyword::kViewData, data);
}

bool VXProtocol::PutViewData(TextRef data) {
  return PutKeyWord(section::kView, keyword::kViewData, data);
}

bool VXProtocol::GetViewDescription(std::string& description) {
  return GetKeyWord(section::kView, keyword::kDescription, description);
}

bool VXProtocol::GetLevel(std::string& level) { return GetGlobalData(global::kLevel, level); }

bool VXProtocol::PutLevel(TextRef level) { return PutGlobalData(global::kLevel, level); }

bool VXProtocol::IsVisible(int& visible) {
  return GetKeyWordInt(section::kView, keyword::kVisibled, visible);
}

bool VXProtocol::SetVisible(bool visible) {
  return PutKeyWord(section::kView, keyword::kVisibled, visible ? "1" : "0");
}

int VXProtocol::ReadPin(TextRef item) {
  std::string text;
  return GetGlobalData(item, text) ? ParseInt(text) : 0;
}

int VXProtocol::GetFromPin() { return ReadPin(global::kFromPin); }

int VXProtocol::GetToPin() { return ReadPin(global::kToPin); }

int VXProtocol::GetOrientPin() { return ReadPin(global::kOrientPin); }

bool VXProtocol::GetDrawingName(std::string& name) { return GetCadx(keyword::kDrawingName, name); }

bool VXProtocol::PutDrawingName(TextRef name) { return PutCadx(keyword::kDrawingName, name); }

bool VXProtocol::GetMeasure(std::string& measure) {
  return GetGlobalData(global::kMeasure, measure);
}

bool VXProtocol::KeepsInfo() {
  std::string remove;
  if (!GetGlobalData(global::kReallyRemoveInfo, remove) &&
      !GetGlobalData(global::kRemoveInfo, remove)) {
    return true;
  }
  return ParseInt(remove) == 0;
}

double VXProtocol::GetScale() {
  std::string text;
  if (!GetGlobalData(global::kScale, text)) return 1.0;
  const double scale = ParseReal(text);
  return scale > 0.0 ? scale : 1.0;
}

bool VXProtocol::SetScale(double scale) {
  return PutGlobalData(global::kScale, FormatNumber(scale));
}

int VXProtocol::GetNewView() {
  int newView = 0;
  GetKeyWordInt(section::kCadx, keyword::kNewView, newView);
  return newView;
}

bool VXProtocol::SetNewView(int newView) {
  return PutKeyWordInt(section::kCadx, keyword::kNewView, newView);
}

bool VXProtocol::GetDataFileName(std::string& name) {
  if (!GetKeyWord(section::kMain, keyword::kDataFile, name) &&
      !GetKeyWord(section::kFiles, keyword::kDataFile, name)) {
    return false;
  }
  const auto bar = name.find('|');
  if (bar != std::string::npos) name.erase(0, bar + 1);
  return true;
}

int VXProtocol::IsChanged() {
  std::string text;
  return GetGlobalData(global::kChanged, text) ? ParseInt(text) : 0;
}

bool VXProtocol::SetChanged(int changed) {
  return PutGlobalData(global::kChanged, std::to_string(changed));
}

bool VXProtocol::SetDrawn(bool fromCad) {
  const bool originNoted = !fromCad || PutCadx(keyword::kFromCad, "1");
  return PutCadx(keyword::kDrawn, "1") && originNoted;
}

bool VXProtocol::HasMcwData() { return GetKeyCount(section::kMcwData) != 0; }

}  // namespace quillmar
