// Datrova.exe: stands for the data wizard. It looks at the template description as the wizard would
// who has to complete the user part: everything that the description names must be there.
#include <string>
#include <vector>

#include "platform/Files.h"
#include "platform/Profile.h"
#include "wizard/WizardRun.h"

namespace {

namespace platform = quillmar::platform;
using wizard::Refusal;

constexpr std::size_t kLongestValue = 64 * 1024;

class Template {
 public:
  explicit Template(std::string path) : path(std::move(path)) {
    if (!platform::FileExists(this->path)) throw Refusal("There is no file " + this->path);
  }

  std::string Get(const char* section, const std::string& key) const {
    return platform::ReadProfileText(path, section, key, "", kLongestValue);
  }

  void Expect(const char* section, const char* key, const std::string& value) const {
    const std::string found = Get(section, key);
    if (found != value) throw Refusal(std::string(key) + " is \"" + found + "\"");
  }

  // A file, by its path or by its name in the folder.
  void ExpectFile(const char* key, const std::string& file) const {
    if (file.empty() || !platform::FileExists(file)) {
      throw Refusal(std::string(key) + ": there is no file \"" + file + "\"");
    }
  }

 private:
  std::string path;
};

std::vector<std::string> Split(const std::string& list) {
  std::vector<std::string> items(1);
  for (const char c : list) {
    if (c == ',') {
      items.emplace_back();
    } else {
      items.back() += c;
    }
  }
  return items;
}

void CheckFolder(const std::string& folder) {
  if (folder.empty() || folder.back() != '\\' || !platform::FileExists(folder)) {
    throw Refusal("TempDir is no folder: \"" + folder + "\"");
  }
}

void CheckPictureAndUnits(const Template& part) {
  part.ExpectFile("Picture", part.Get("Keywords", "Picture"));
  const std::string units = part.Get("Keywords", "Units");
  if (units != "mm" && units != "in" && !units.empty()) {
    throw Refusal("Units are \"" + units + "\"");
  }
}

void CheckLisp(const Template& part) {
  CheckPictureAndUnits(part);
  part.ExpectFile("Driver", part.Get("Keywords", "Driver"));
  part.ExpectFile("VarsFile", part.Get("Template", "TempDir") + part.Get("Keywords", "VarsFile"));
  if (Split(part.Get("Views", "USER")).back() != part.Get("Keywords", "Picture")) {
    throw Refusal("The views do not end with the picture");
  }
}

void CheckDxf(const Template& part) {
  CheckPictureAndUnits(part);
  for (const std::string& file : Split(part.Get("Keywords", "DXFfiles"))) {
    part.ExpectFile("DXFfiles", file);
  }
}

void CheckDesktop(const Template& part) {
  if (part.Get("KEYWORDS", "ModelID").empty()) throw Refusal("There is no ModelID");
  const std::string inch = part.Get("TEMPLATE", "IsItIn");
  if (inch != "1" && !inch.empty()) throw Refusal("IsItIn is \"" + inch + "\"");
}

// A protocol that the CAD's data were put into is named instead of a file.
bool IsProtocol(const std::string& parameter) { return parameter.rfind("/C ", 0) == 0; }

void CheckTemplate(const std::string& parameter) {
  if (IsProtocol(parameter)) return;
  const Template part(parameter);
  CheckFolder(part.Get("Template", "TempDir"));
  part.Expect("Globals", "Version", "2");
  const std::string type = part.Get("Template", "Type");
  if (type == "LISP") return CheckLisp(part);
  if (type == "DXF") return CheckDxf(part);
  if (type == "DESKTOP") return CheckDesktop(part);
  throw Refusal("Type is \"" + type + "\"");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  return wizard::Run("Datrova", wizard::kStartedByModule, argumentCount, arguments, CheckTemplate);
}
