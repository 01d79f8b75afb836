// Templates of user parts: what the CAD and the user say goes into the ini file that the data
// wizard reads, and nothing but what was put there may be found in it.
#include <map>
#include <vector>

#include "Fuzzing.h"
#include "base/Texts.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "userparts/Companions.h"
#include "userparts/DesktopTemplate.h"
#include "userparts/UserParts.h"

namespace {

using namespace quillmar;

using Keys = std::vector<std::string>;
using Sections = std::map<std::string, Keys>;

constexpr std::size_t kRoom = 1 << 20;
constexpr char kEnd = '\x1F';
constexpr int kDrawings = 3;

int drawingsLeft = 0;
int QM_CDECL CreateDxfFile(const char*) { return drawingsLeft-- > 0 ? 1 : 0; }
int QM_CDECL CreatePreview(char*) { return 1; }

const PartServices& Services() {
  static const bench::TemporaryMachine machine;
  static const bench::ModuleWorld world = [] {
    CadDriverTable driver = bench::InstantDriver();
    driver.CreateDxfFile.pointer = &CreateDxfFile;
    driver.CreatePreview.pointer = &CreatePreview;
    return bench::ModuleWorld(bench::InstantStorage({}), bench::InstantLinks(), driver);
  }();
  return world.Services();
}

std::string Next(std::string_view& input) {
  return std::string(fuzz::TakeUntil(input, kEnd)).c_str();
}

Keys NamesIn(const std::string& file, const char* section) {
  std::string names(kRoom, '\0');
  names.resize(platform::GetProfileText(file, section, nullptr, "", names.data(), names.size()));
  Keys keys = SplitList(names, std::string(1, '\0'));
  std::erase(keys, "");
  return keys;
}

void RequireLayout(const std::string& file, const Sections& sections) {
  std::string names(kRoom, '\0');
  names.resize(platform::GetProfileText(file, nullptr, nullptr, "", names.data(), names.size()));
  std::size_t found = 0;
  for (const std::string& name : SplitList(names, std::string(1, '\0'))) {
    if (name.empty()) continue;
    const auto section = sections.find(name);
    fuzz::Require(section != sections.end(), "no section that was not put");
    fuzz::Require(NamesIn(file, name.c_str()) == section->second, "the keys in their order");
    ++found;
  }
  fuzz::Require(found == sections.size(), "all sections");
}

// What a reader gives back of a value: one line, without blanks around it.
bool IsPlain(const std::string& value) {
  const auto plain = [](unsigned char c) { return c > ' ' && c < 0x7F && c != '"' && c != '\''; };
  return std::all_of(value.begin(), value.end(), plain);
}

void WriteModel(std::string_view input) {
  DesktopModel model;
  model.id = Next(input);
  model.isInch = model.id.size() % 2 != 0;
  Keys variables;
  while (!input.empty()) {
    const std::string type = input.front() % 2 == 0 ? "R" : "S";
    const std::string name = Next(input);
    const std::string value = Next(input);
    model.variables.push_back({name, name, type, value, Next(input)});
    char key[16];
    std::snprintf(key, sizeof key, "V%03zu", model.variables.size());
    variables.push_back(key);
  }
  const std::string file = WriteDesktopTemplate(Services(), model);
  fuzz::Require(!file.empty(), "it is written");
  Sections sections = {{"TEMPLATE", {"Type", "TempDir", "ModelExt", "ModelDir"}},
                       {"GLOBALS", {"Version"}},
                       {"KEYWORDS", {"ModelID"}},
                       {"DATA", {"D001"}}};
  if (model.isInch) sections["TEMPLATE"].push_back("IsItIn");
  if (!variables.empty()) sections["VARIABLES"] = variables;
  RequireLayout(file, sections);
  for (std::size_t row = 0; row < variables.size(); ++row) {
    const UserVariable& variable = model.variables[row];
    const std::string text = std::to_string(row + 2) + "," + variable.name + "," +
                             variable.description + ",f3," + variable.unit + ",,1,1,1";
    if (!IsPlain(text)) continue;
    fuzz::Require(platform::ReadProfileText(file, "VARIABLES", variables[row], "", kRoom) == text,
                  "a variable is read as it was given");
  }
}

void MakeUserPart(std::string_view input) {
  const std::string name = Next(input);
  const std::string views = Next(input);
  platform::Machine& machine = platform::Machine::Current();
  machine.Answers().userParts.push_back({name, views, static_cast<int>(input.size() % 3)});
  drawingsLeft = kDrawings;
  UserParts parts(Services());
  fuzz::Require(parts.AddUTDXFPart() == 1, "the export succeeds");
  const std::string file = TempFolderPath() + name + ".tmu";
  // Not every name is one of a file.
  if (!platform::FileExists(file)) return;
  RequireLayout(file, {{"Template", {"Type", "TempDir"}},
                       {"Globals", {"Version"}},
                       {"Keywords", {"DXFfiles", "Picture", "Units"}}});
  platform::RemoveFile(file);
}

}  // namespace

// The first byte chooses between a model of the desktop and a part that the user names.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Services();
  const std::string_view input = fuzz::Input(data + 1, size - 1);
  if (data[0] % 2 == 0) {
    WriteModel(input);
  } else {
    MakeUserPart(input);
  }
  platform::Machine::Current().DebugLines().clear();
  platform::Machine::Current().Shown().clear();
  return 0;
}
