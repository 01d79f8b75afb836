// User parts and wizards: what the CAD is asked for, the template descriptions, and what the
// wizards are started with.
#include <chrono>
#include <fstream>
#include <thread>

#include "Calculation.h"
#include "UserDialog.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Profile.h"
#include "platform/System.h"

namespace quillmar::contract {
namespace {

using Lines = std::vector<std::string>;

class UserParts : public Contract {
 protected:
  UserParts() {
    StartSession();
    EXPECT_EQ(module.Set2dFileType(2), 1);
    host.Answer("32", kSuiteFolder);
    strict::Core().Strict_SetAnswer("CreatePreview.fileName", (Base() + ".bmp").c_str());
    for (const char* file : {"Lever.tmu", "Quillmar.tmu"}) platform::RemoveFile(Temp() + file);
    runsBefore = Runs("Datrova");
  }

  static std::string Temp() { return platform::TempFolder() + "\\"; }
  static std::string Base() { return Temp() + "Lever"; }

  static void Answer(const std::string& key, const std::string& answer) {
    strict::Core().Strict_SetAnswer(key.c_str(), answer.c_str());
  }

  // What the add-in was asked for; its main window is asked for at every call of the host too.
  static Lines Asked() {
    Lines functions = CalledFunctions();
    std::erase(functions, "GetMainHwnd");
    return functions;
  }

  // The wizards note in a file beside them what they were started with.
  static std::string RecordOf(const std::string& program) {
    return (program == "notepad" ? platform::WindowsFolder() : kSuiteFolder) + "\\" + program +
           ".ini";
  }
  static int Runs(const std::string& program) {
    return platform::ReadProfileInt(RecordOf(program), "Runs", "Count", 0);
  }
  static std::string ParameterOfRun(const std::string& program, int run) {
    for (int i = 0; i < 1000 && Runs(program) < run; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return platform::ReadProfileText(RecordOf(program), std::to_string(run), "Parameter", "", 1024);
  }
  // Of the one run of the data wizard since the test began.
  std::string WizardParameter() const { return ParameterOfRun("Datrova", runsBefore + 1); }

  // All lines of a file of the machine that are not empty.
  static Lines LinesOf(const std::string& path) {
    std::ifstream file(OwnPath(path), std::ios::binary);
    Lines lines;
    for (std::string line; std::getline(file, line);) {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (!line.empty()) lines.push_back(line);
    }
    return lines;
  }

  int runsBefore = 0;
};

// The text viewer of the machine becomes a program that notes what it was started with.
void ReplaceNotepad() {
  const std::filesystem::path viewer = OwnPath(platform::WindowsFolder() + "\\notepad.exe");
  std::filesystem::remove(viewer);
  std::filesystem::copy_file(OwnPath(kSuiteFolder + "\\Datrova.exe"), viewer);
}

TEST_F(UserParts, ADrawingBecomesALispDescription) {
  Answer("GetPoint.x", "1.5");
  Answer("GetPoint.y", "-2.25");
  ReplaceNotepad();
  // The add-in of the test draws nothing, which a generator that reads the drawing must see.
  const int expected = kStrictCompanions ? 1 : 0;
  {
    UserDialog user("Lever", "front,side", 1);
    EXPECT_EQ(module.AddUTPart(), expected);
  }
  EXPECT_EQ(Calls("CreateDxfFile").at(0).arguments, Lines{Base() + ".dxf"});
  EXPECT_EQ(Calls("CreatePreview").at(0).arguments, Lines{Base()});
  if (!kStrictCompanions) {
    EXPECT_THAT(LinesOf(kSuiteFolder + "\\lispora.err"), ElementsAre(HasSubstr("Cannot read")));
    EXPECT_EQ(ParameterOfRun("notepad", 1), kSuiteFolder + "\\lispora.err");
    EXPECT_FALSE(platform::FileExists(Base() + ".tmu"));
    return;
  }
  EXPECT_EQ(Calls("GenerateLisp").at(0).arguments,
            (Lines{Base() + ".dxf", Base(), "USER", "", "0", "1.5", "-2.25", "0", "0", "0", "0.001",
                   "0.01"}));
  EXPECT_EQ(WizardParameter(), Base() + ".tmu");
  EXPECT_THAT(LinesOf(Base() + ".tmu"),
              ElementsAre("[Template]", "Type=LISP", "TempDir=" + Temp(), "[Globals]", "Version=2",
                          "[Keywords]", "Driver=" + Base() + ".lsp", "VarsFile=Lever.prf",
                          "Picture=" + Base() + ".bmp", "Units=in", "[Views]",
                          "USER=front,side," + Base() + ".bmp"));
  // The generator that was loaded once serves the second part too.
  host.Answer("32", "C:\\Nowhere\\");
  UserDialog user("Lever", "", 0);
  EXPECT_EQ(module.AddUTPart(), 1);
  EXPECT_THAT(Calls("GenerateLisp"), SizeIs(2));
}

TEST_F(UserParts, WhereALispPartEnds) {
  const struct {
    const char* refused;
    Lines called;
  } rows[] = {
      {"GetPoint", {"GetPoint"}},
      {"CreateDxfFile", {"GetPoint", "CreateDxfFile"}},
      {"CreatePreview", {"GetPoint", "CreateDxfFile", "CreatePreview"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.refused);
    Answer(row.refused, "0");
    ForgetCalls();
    {
      UserDialog user("Lever", "", 0);
      EXPECT_EQ(module.AddUTPart(), 0);
    }
    EXPECT_EQ(Asked(), row.called);
    strict::Core().Strict_SetAnswer(row.refused, nullptr);
  }
  {
    UserDialog cancelled;
    EXPECT_EQ(module.AddUTPart(), 0);
  }
  if (kStrictCompanions) {
    Answer("GenerateLisp", "0");
    UserDialog user("Lever", "", 0);
    EXPECT_EQ(module.AddUTPart(), 0);
  }
  EXPECT_FALSE(platform::FileExists(Base() + ".tmu"));
  EXPECT_EQ(Runs("Datrova"), runsBefore);
}

TEST_F(UserParts, WithoutAGeneratorNobodyIsAsked) {
  host.Answer("32", "C:\\Nowhere");
  EXPECT_EQ(module.AddUTPart(), 0);
  EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(UserParts, DrawingsAreTakenUntilThereIsNoMore) {
  Answer("CreateDxfFile(" + Base() + "3.dxf)", "0");
  const char* const units[] = {"mm", "in", ""};
  for (const int choice : {0, 1, -1}) {
    SCOPED_TRACE(choice);
    {
      UserDialog user("Lever", "front", choice);
      EXPECT_EQ(module.AddUTDXFPart(), 1);
    }
    EXPECT_EQ(WizardParameter(), Base() + ".tmu");
    ++runsBefore;
    EXPECT_THAT(LinesOf(Base() + ".tmu"),
                ElementsAre("[Template]", "Type=DXF", "TempDir=" + Temp(), "[Globals]", "Version=2",
                            "[Keywords]",
                            "DXFfiles=" + Base() + "0.dxf," + Base() + "1.dxf," + Base() + "2.dxf",
                            "Picture=" + Base() + ".bmp",
                            std::string("Units=") + units[choice < 0 ? 2 : choice]));
  }
}

TEST_F(UserParts, WithoutDrawingsNoWizardIsStarted) {
  {
    UserDialog cancelled;
    EXPECT_EQ(module.AddUTDXFPart(), 0);
  }
  Answer("CreateDxfFile", "0");
  {
    UserDialog user("Lever", "", 0);
    EXPECT_EQ(module.AddUTDXFPart(), 1);
  }
  Answer("CreatePreview", "0");
  {
    UserDialog user("Lever", "", 0);
    EXPECT_EQ(module.AddUTDXFPart(), 0);
  }
  EXPECT_FALSE(platform::FileExists(Base() + ".tmu"));
  EXPECT_EQ(Runs("Datrova"), runsBefore);
}

TEST_F(UserParts, ACadWithoutEndDoesNotKeepTheUserWaiting) {
  UserDialog user("Lever", "", 0);
  EXPECT_EQ(module.AddUTDXFPart(), 1);
  EXPECT_THAT(Calls("CreateDxfFile"), SizeIs(1000));
  EXPECT_EQ(WizardParameter(), Base() + ".tmu");
}

TEST_F(UserParts, TheImportWizardGetsAProtocol) {
  const int before = Runs("Inmova");
  EXPECT_EQ(module.ImportWizard(3, -1, "C:\\Parts\\bolt.stp"), 1);
  const std::string parameter = ParameterOfRun("Inmova", before + 1);
  ASSERT_EQ(parameter.substr(0, 3), "/C ");
  const std::string id = parameter.substr(3);
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Data", "Type"), "3");
  EXPECT_EQ(record.KeyWord("Data", "Units"), "-1");
  EXPECT_EQ(record.KeyWord("Data", "Files"), "1");
  EXPECT_EQ(record.KeyWord("Files", "Item0"), "C:\\Parts\\bolt.stp");
  if (!kStrictCompanions) {
    EXPECT_EQ(
        platform::ReadProfileText(RecordOf("Inmova"), std::to_string(before + 1), "Result", "", 64),
        "Accepted");
  }
  host.Answer("32", "C:\\Nowhere");
  EXPECT_EQ(module.ImportWizard(0, 0, nullptr), 1) << "nobody waits for a wizard";
}

TEST_F(UserParts, TheFiniteElementCalculationGetsADrawing) {
  host.Answer("2", "0");
  EXPECT_EQ(module.CallFem(), 1) << "what the host says does not count";
  const std::string drawing = Calls("CreateDxfFile").at(0).arguments.at(0);
  EXPECT_THAT(drawing, testing::StartsWith(Temp() + "FEM"));
  EXPECT_THAT(drawing, testing::EndsWith(".dxf"));
  ASSERT_THAT(host.Commands(), SizeIs(1));
  const std::string call = host.Commands()[0];
  ASSERT_EQ(call.substr(0, 3), "2(\"");
  const Record record(call.substr(3, call.size() - 5));
  EXPECT_EQ(record.Global("Standard"), "ISO");
  EXPECT_EQ(record.Global("PrfStd"), "ISO");
  EXPECT_EQ(record.Global("Language"), "NO");
  EXPECT_EQ(record.KeyWord("Main", "DataFile"), "Symbols|tarnelo");
  EXPECT_EQ(record.KeyWord("Cadx", "recalc"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "FEMDxfFile"), drawing);

  host.Forget();
  Answer("CreateDxfFile", "0");
  EXPECT_EQ(module.CallFem(), 0);
  EXPECT_THAT(host.Commands(), IsEmpty());
  EXPECT_FALSE(platform::FileExists(Calls("CreateDxfFile").at(1).arguments.at(0)));
}

TEST_F(UserParts, ValuesOfAReferenceText) {
  std::string reference;
  {
    Record record;
    record.SetParameter("b", "1,5", "mm").SetParameter("c", "x", "").SetParameter("d", ",,", "in");
    reference = record.Reference();
  }
  const int open = strict::Core().Strict_OpenProtocols();
  const struct {
    const char* names;
    const char* values;
  } rows[] = {
      {"a,b", "b,1<VXCOMMA>5,mm"},
      {"c,b", "c,x,,b,1<VXCOMMA>5,mm"},
      {"d", "d,<VXCOMMA><VXCOMMA>,in"},
      {",a,,", ""},
      {"", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.names);
    const int length = static_cast<int>(std::string(row.values).size());
    std::vector<char> out(100, '#');
    out.back() = '\0';
    EXPECT_EQ(module.GetDataValues(reference.c_str(), row.names, out.data(), length), length);
    EXPECT_EQ(out[0], '#') << "a text exactly as long as the buffer is not copied";
    EXPECT_EQ(module.GetDataValues(reference.c_str(), row.names, out.data(), length + 1), length);
    EXPECT_STREQ(out.data(), row.values);
    EXPECT_EQ(module.GetDataValues(reference.c_str(), row.names, nullptr, 1000), length);
  }
  char out[8] = "#";
  EXPECT_EQ(module.GetDataValues("no reference", "b", out, 8), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(strict::Core().Strict_OpenProtocols(), open) << "the protocol is erased again";
}

TEST_F(UserParts, ThePartOnTheDesktopIsDescribed) {
  Answer("GetPart.partName", "Lever:1");
  Answer("GetPart.text", "reference");
  Answer("IsInchUserPart.inch", "1");
  Answer("GetParameterListEx.text", "d,20.5,note,a<VXCOMMA>b,VXP_PP_Mass,1,");
  EXPECT_EQ(module.CallUTFunction(4003), 1);
  platform::PumpMessages();
  EXPECT_EQ(WizardParameter(), Temp() + "Quillmar.tmu");
  EXPECT_EQ(Calls("IsInchUserPart").at(0).arguments.at(0), "Lever:1");
  EXPECT_THAT(LinesOf(Temp() + "Quillmar.tmu"),
              ElementsAre("[TEMPLATE]", "Type=DESKTOP", "TempDir=" + Temp(), "ModelExt=prt",
                          "ModelDir=models", "IsItIn=1", "[GLOBALS]", "Version=2", "[KEYWORDS]",
                          "ModelID=Lever_1", "[VARIABLES]", "V001=2,d,d,f3,in,,1,1,1",
                          "V002=3,note,note,f3,,,1,1,1", "[DATA]", "D001=20.5~in,a<VXCOMMA>b"));

  Answer("IsInchUserPart", "0");
  host.Answer("32", "C:\\Nowhere");
  EXPECT_EQ(module.DataWizard(), 0) << "there is no wizard";
  EXPECT_THAT(LinesOf(Temp() + "Quillmar.tmu"), testing::Not(testing::Contains("IsItIn=1")));
  Answer("GetPart", "0");
  platform::RemoveFile(Temp() + "Quillmar.tmu");
  EXPECT_EQ(module.DataWizard(), 0);
  EXPECT_FALSE(platform::FileExists(Temp() + "Quillmar.tmu"));
}

class OldLayouts : public Calculation {};

TEST_F(OldLayouts, AFinishedShaftIsBroughtToTheCurrentLayout) {
  platform::WriteProfileText(kModuleFolder + "\\ProtConv.ini", "Strict_SHAFT_1->2", "ISO_old",
                             "SIDE");
  std::string id;
  {
    Record record;
    Fill(record, kShaft);
    record.SetVersion(1, 0)
        .SetParameter("ElNum", "1", "ND")
        .SetParameter("drazka_1", "2", "ND")
        .SetParameter("MLL_1", "1.5", "mm")
        .SetParameter("material", "7", "ND");
    id = record.Id();
  }
  host.Finish(150, id);
  const Record converted(id);
  EXPECT_EQ(converted.Version(), "2.0");
  EXPECT_EQ(converted.Parameter("RR_M_1"), "1.5 mm");
  EXPECT_EQ(converted.Parameter("mat"), "7 ND");
  EXPECT_EQ(converted.KeyWord("Main", "View"), "SIDE");
  EXPECT_THAT(Calls("InsertShaft"), SizeIs(1));
}

}  // namespace
}  // namespace quillmar::contract
