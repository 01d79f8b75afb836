#include "addin/Losses.h"

#include <array>

#include "quillmar/CadDriver.h"

namespace tools {
namespace {

struct Loss {
  std::string_view function;
  std::string_view lost;
};

/* clang-format off */
constexpr Loss kLosses[] = {
    {"GetMainHwndForActivation", "nothing: the window of GetMainHwnd is brought to the front"},
    {"GroupInsertStart", "the CAD does not learn that a group insert begins"},
    {"GroupInsertEnd", "the CAD does not learn that a group insert has ended"},
    {"InsertFeature", "features cannot be inserted"},
    {"ChangeFeature", "features cannot be changed"},
    {"GetParameterListEx", "nothing: GetParameterList is asked"},
    {"GetPhysicalPropertiesEx", "nothing: GetPhysicalProperties is asked"},
    {"GetShaftParameterList", "changes of a shaft made in the CAD are not read back"},
    {"GetAssemblyName", "assembly protocols get no name"},
    {"InsertCalculationEx", "InsertCalculation is called: no file path"},
    {"InsertCalculationEx2", "InsertCalculationEx or InsertCalculation is called: no parameters"},
    {"ChangeCalculationEx2", "ChangeCalculation is called: no parameters"},
    {"GetAssemblyPath", "file names that depend on the assembly's folder; \"AsmPath\""},
    {"InsertNamedProtocol", "named protocols (groups) are not shown in the CAD"},
    {"ChangeNamedProtocol", "named protocols (groups) are not shown in the CAD"},
    {"IsInchUserPart", "user parts count as metric"},
    {"GetPhysicalProperties", "mass and other physical properties stay unknown"},
    {"GetFeaturesState", "states of features are not read"},
    {"SetFeaturesState", "states of features are not set"},
    {"GetReferenceDims", "reference dimensions are not read"},
    {"OptimWillStart", "the CAD does not learn that an optimisation begins"},
    {"OptimEnded", "the CAD does not learn that an optimisation has ended"},
    {"ChangeAssemblyEx", "ChangeAssembly is called: no extended data of assemblies"},
    {"StartMeasure", "measuring in the CAD for a calculation fails"},
    {"ChangeOptionsSetting", "nothing: it is never called"},
    {"InsertCamPart", "cams by points; together with InsertCamPartEx: all cams"},
    {"ChangeCamPart", "changes of cams by points; together with ChangeCamPartEx: of all cams"},
    {"InsertCamPartEx", "InsertCamPart is called; without it cams cannot be inserted"},
    {"ChangeCamPartEx", "ChangeCamPart is called; without it cams cannot be changed"},
    {"GetFilesData", "exchange of data files with the CAD fails"},
    {"GetDataWD", "the data wizard gets no data"},
    {"StopWD", "the CAD does not learn that the data wizard stops"},
    {"McStart", "the CAD does not learn that several views of a calculation follow"},
    {"McEnd", "the CAD does not learn that all views of a calculation stand"},
    {"GetPartsVisibility", "visibility of parts is not read"},
    {"SetPartsVisibility", "visibility of parts is not set"},
    {"ShowFileDialog", "nothing: the module shows its own file dialog"},
    {"SetActiveConfiguration", "configurations are not activated"},
    {"GetConfiguration", "configurations are not read"},
    {"InsertSymbol", "drawing symbols cannot be inserted"},
    {"ChangeSymbol", "drawing symbols cannot be changed"},
    {"InsertFormat", "sheet formats cannot be inserted"},
    {"ChangeFormat", "sheet formats cannot be changed"},
    {"GetPoint", "user parts cannot ask for a point"},
    {"CreateDxfFile", "user parts cannot be taken from a drawing"},
    {"CreatePreview", "user parts get no picture"},
};
/* clang-format on */

constexpr std::string_view Find(std::string_view function) {
  for (const Loss& row : kLosses) {
    if (row.function == function) return row.lost;
  }
  return {};
}

// The table knows every optional function.
#define QM_KNOWN_REQUIRED(name) true
#define QM_KNOWN_OPTIONAL(name) !Find(name).empty()
#define QM_CHECK(need, name, result, parameters, arguments) static_assert(QM_KNOWN_##need(#name));
QM_CAD_FUNCTIONS(QM_CHECK)
QM_CAD_2D_FUNCTIONS(QM_CHECK)
#undef QM_CHECK

}  // namespace

std::string_view LossWithout(std::string_view function) { return Find(function); }

}  // namespace tools
