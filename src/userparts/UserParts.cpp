#include "userparts/UserParts.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/Files.h"
#include "platform/System.h"
#include "quillmar/UserParts.h"
#include "userparts/Companions.h"

namespace quillmar {
namespace {

constexpr const char* kTemplate = "Template";
constexpr const char* kGlobals = "Globals";
constexpr const char* kKeywords = "Keywords";
constexpr const char* kViews = "Views";
constexpr const char* kVersion = "2";

constexpr const char* kNotepad = "notepad.exe";

// Characters that the CAD may write behind the path which it is given for the preview, and what is
// kept free behind them for a CAD that writes more.
constexpr std::size_t kPreviewRoom = 10;
constexpr std::size_t kSpareRoom = 1024;

// A CAD that never says "no more drawings" is believed so far.
constexpr int kMostDrawings = 1000;

std::string UnitText(int units) {
  if (units == 0) return "mm";
  return units == 1 ? "in" : "";
}

}  // namespace

UserParts::UserParts(const PartServices& partServices) : services(partServices) {}

int UserParts::AddUTPart() {
  if (!lisp.IsBound() && !lisp.Bind(services.host.CompanionFolder())) return 0;
  const auto answer = Ask();
  if (!answer) return 0;
  double x = 0.0;
  double y = 0.0;
  int third = 0;
  if (services.driver.GetPoint(&x, &y, &third) == 0) return 0;

  const std::string folder = TempFolderPath();
  const std::string base = folder + answer->name;
  if (!CreateDxfFile(base + ".dxf")) return 0;
  const auto picture = CreatePreview(base);
  if (!picture) return 0;
  if (!lisp.GenerateLisp(base + ".dxf", base, x, y)) {
    ShowGeneratorErrors();
    return 0;
  }

  const TemplateFile file(base + ".tmu");
  file.Remove();
  file.Put(kTemplate, "Type", "LISP");
  file.Put(kTemplate, "TempDir", folder);
  file.Put(kGlobals, "Version", kVersion);
  file.Put(kKeywords, "Driver", base + ".lsp");
  file.Put(kKeywords, "VarsFile", answer->name + ".prf");
  file.Put(kKeywords, "Picture", *picture);
  file.Put(kKeywords, "Units", UnitText(answer->units));
  file.Put(kViews, "USER", answer->views + "," + *picture);
  StartDataWizard(file);
  return 1;
}

int UserParts::AddUTDXFPart() {
  const auto answer = Ask();
  if (!answer) return 0;
  const std::string folder = TempFolderPath();
  const std::string base = folder + answer->name;
  const TemplateFile file(base + ".tmu");
  file.Remove();
  const auto picture = CreatePreview(base);
  if (!picture) return 0;
  const std::string drawings = CreateDxfFiles(base);
  if (drawings.empty()) return 1;

  file.Remove();
  file.Put(kTemplate, "Type", "DXF");
  file.Put(kTemplate, "TempDir", folder);
  file.Put(kGlobals, "Version", kVersion);
  file.Put(kKeywords, "DXFfiles", drawings);
  file.Put(kKeywords, "Picture", *picture);
  file.Put(kKeywords, "Units", UnitText(answer->units));
  StartDataWizard(file);
  return 1;
}

std::optional<platform::UserPartAnswer> UserParts::Ask() const {
  return platform::AskUserPart(services.paths.Self(), MainWindow(services.driver),
                               [this](QmWindow dialog) { services.texts.TranslateWindow(dialog); });
}

bool UserParts::CreateDxfFile(const std::string& path) const {
  platform::RemoveFile(path);
  return services.driver.CreateDxfFile(path.c_str()) != 0;
}

// The path of the picture, which the CAD makes from the one it is given.
std::optional<std::string> UserParts::CreatePreview(const std::string& begin) const {
  std::vector<char> buffer(begin.size() + kPreviewRoom + 1 + kSpareRoom, '\0');
  std::copy(begin.begin(), begin.end(), buffer.begin());
  if (services.driver.CreatePreview(buffer.data()) == 0) return std::nullopt;
  return std::string(buffer.data(), ::strnlen(buffer.data(), buffer.size()));
}

// Paths of the drawings, as many as the CAD has, joined by ",".
std::string UserParts::CreateDxfFiles(const std::string& begin) const {
  std::string drawings;
  for (int number = 0; number < kMostDrawings; ++number) {
    const std::string path = begin + std::to_string(number) + ".dxf";
    if (!CreateDxfFile(path)) break;
    if (number > 0) drawings += ',';
    drawings += path;
  }
  return drawings;
}

void UserParts::ShowGeneratorErrors() const {
  const std::string errors = services.host.CompanionFolder() + "\\" QM_LISP_ERRORS;
  if (!platform::FileExists(errors)) return;
  StartWithParameter(platform::WindowsFolder(), kNotepad, errors);
}

void UserParts::StartDataWizard(const TemplateFile& file) const {
  StartWithParameter(services.host.CompanionFolder(), QM_DATA_WIZARD, file.Path());
}

}  // namespace quillmar
