#include "userparts/DesktopTemplate.h"

#include <algorithm>
#include <string_view>

#include "naming/SafeFileName.h"
#include "parts/CadListReaders.h"
#include "parts/ParameterLists.h"
#include "parts/SelectedPart.h"
#include "quillmar/UserParts.h"
#include "userparts/Companions.h"
#include "userparts/TemplateFile.h"

namespace quillmar {
namespace {

constexpr const char* kFileName = "Quillmar.tmu";
constexpr const char* kTemplate = "TEMPLATE";
constexpr const char* kGlobals = "GLOBALS";
constexpr const char* kKeywords = "KEYWORDS";
constexpr const char* kVariables = "VARIABLES";
constexpr const char* kData = "DATA";
constexpr const char* kDataRow = "D001";

constexpr const char* kReal = "R";
constexpr const char* kText = "S";

// The wizard counts variables from 2; reals are shown with three decimals.
constexpr int kFirstNumber = 2;
constexpr int kDecimals = 3;

// A name and number of three digits at least: "V001".
std::string VariableKey(std::size_t row) {
  const std::string digits = std::to_string(row + 1);
  return "V" + std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

std::string VariableText(const UserVariable& variable, std::size_t row) {
  return std::to_string(row + kFirstNumber) + "," + variable.name + "," + variable.description +
         ",f" + std::to_string(kDecimals) + "," + variable.unit + ",,1,1,1";
}

std::string DataText(const UserVariable& variable) {
  return variable.type == kReal ? variable.value + "~" + variable.unit : variable.value;
}

bool WriteVariables(const TemplateFile& file, const std::vector<UserVariable>& variables) {
  std::string data;
  for (std::size_t row = 0; row < variables.size(); ++row) {
    if (!file.Put(kVariables, VariableKey(row), VariableText(variables[row], row))) return false;
    if (row > 0) data += ',';
    data += DataText(variables[row]);
  }
  return file.Put(kData, kDataRow, data);
}

// The CAD knows an object's parameters by the identifier of its protocol; one without a protocol
// can only be asked for by its name.
std::string ParameterKey(const CadDriverTable& driver, const std::string& part) {
  std::string reference;
  std::string id;
  if (ReadCadReference(driver, part, reference) &&
      VXProtocol::ExtractProtocolID(reference, id, Markers::Standard) && !id.empty()) {
    return id;
  }
  return part;
}

// Commas within values stay as the list has them: the template's own lists are cut at commas too.
std::vector<UserVariable> ReadVariables(const PartServices& services, const DesktopModel& model) {
  const CadList list = OffersList(services.driver, CadList::ParametersEx) ? CadList::ParametersEx
                                                                          : CadList::Parameters;
  std::string text;
  ReadCadList(services.driver, services.errors, list, ParameterKey(services.driver, model.id),
              text);
  const std::vector<std::string> items = SplitKeepingEmpty(text, ',');
  std::vector<UserVariable> variables;
  for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
    const std::string& name = items[i];
    if (name.empty() || name.starts_with(kCadValuePrefix) || name.starts_with('*')) continue;
    const bool isReal = IsNumber(items[i + 1]);
    variables.push_back({name, name, isReal ? kReal : kText, items[i + 1],
                         isReal ? (model.isInch ? "in" : "mm") : ""});
  }
  return variables;
}

}  // namespace

std::string WriteDesktopTemplate(const PartServices& services, const DesktopModel& model) {
  const std::string folder = TempFolderPath();
  const TemplateFile file(folder + kFileName);
  file.Remove();
  std::string id = model.id;
  MakeSafeFileName(id);
  const bool written =
      file.Put(kTemplate, "Type", "DESKTOP") && file.Put(kTemplate, "TempDir", folder) &&
      file.Put(kTemplate, "ModelExt", services.session.modelExt) &&
      file.Put(kTemplate, "ModelDir", services.session.modelDirName) &&
      (!model.isInch || file.Put(kTemplate, "IsItIn", "1")) && file.Put(kGlobals, "Version", "2") &&
      file.Put(kKeywords, "ModelID", id) && WriteVariables(file, model.variables);
  return written ? file.Path() : std::string();
}

int DataWizard(const PartServices& services) {
  const auto part = AskSelectedPart(services.driver);
  if (!part || part->name.empty()) return 0;
  // What an earlier call left is no answer to this one, whatever the CAD says next.
  TemplateFile(TempFolderPath() + kFileName).Remove();
  DesktopModel model;
  model.id = part->name;
  int inch = 0;
  model.isInch = services.driver.IsInchUserPart(model.id.c_str(), &inch) != 0 && inch != 0;
  model.variables = ReadVariables(services, model);
  const std::string file = WriteDesktopTemplate(services, model);
  if (file.empty()) return 0;
  return StartWithParameter(services.host.CompanionFolder(), QM_DATA_WIZARD, file) ? 1 : 0;
}

}  // namespace quillmar
