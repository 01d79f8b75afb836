// Exports that hand their arguments to the calculation host, and the other thin ones.
#include <functional>

#include "Calculation.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

class HostExports : public Calculation {};

TEST_F(HostExports, PassTheirArgumentsAndTheHostsAnswer) {
  const struct {
    const char* method;
    std::function<int()> call;
    const char* asked;
    int answer;  // to the host's 7
  } cases[] = {
      {"43", [&] { return module.EditOneLink("P1", "d"); }, R"(43("P1","d"))", 7},
      {"43", [&] { return module.EditOneLink(nullptr, nullptr); }, R"(43("",""))", 7},
      {"44", [&] { return module.EditLinks("P1"); }, R"(44("P1"))", 7},
      {"38", [&] { return module.InitSolution("P1"); }, R"(38("P1"))", 7},
      {"37", [&] { return module.SolveOneLink("P1", "\xE8,x"); }, "37(\"P1\",\"\xE8,x\")", 7},
      {"41", [&] { return module.EndSolution(); }, "41()", 1},
      {"42", [&] { return module.Synchronize("P1", -3); }, R"(42("P1",-3))", 7},
      {"34", [&] { return module.CorrectProtocol("P1"); }, R"(34("P1"))", 7},
      {"51", [&] { return module.GenerateFamTable("P1", "T"); }, R"(51("P1","T"))", 7},
      {"2", [&] { return module.ShowMCWDialog("P1"); }, R"(2("P1"))", 1},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.asked);
    host.Forget();
    host.Answer(each.method, "7");
    EXPECT_EQ(each.call(), each.answer);
    EXPECT_THAT(host.Commands(), ElementsAre(each.asked));
  }
  EXPECT_THAT(CalledFunctions(), testing::Each("GetMainHwnd"));
}

TEST_F(HostExports, AFamilyTableIsNotAskedOfAHostThatLacksIt) {
  host.Answer("refuse GenerateFamTable");
  host.Answer("51", "7");
  EXPECT_EQ(module.GenerateFamTable("P1", "T"), 0);
  EXPECT_THAT(host.Commands(), IsEmpty());
}

TEST_F(HostExports, WithoutAHostTheyFail) {
  module.LogoutCad();  // from then on none is started
  host.End();
  EXPECT_EQ(module.EditLinks("P1"), 0);
  EXPECT_EQ(module.EndSolution(), 0);
  EXPECT_EQ(module.GenerateFamTable("P1", "T"), 0);
  EXPECT_EQ(module.ShowMCWDialog("P1"), 1);
}

using NoHost = Contract;

// First its program is gone, then its class as well.
TEST_F(NoHost, IsFoundOnThisMachine) {
  const std::string key = "SOFTWARE\\Classes\\" QM_HOST_PROGID "\\CLSID";
  const auto classId = TextValue(Hive::LocalMachine, key, "");
  ASSERT_TRUE(classId.has_value());
  ASSERT_FALSE(HostSide::Runs());
  for (const std::string& folder : {kSuiteFolder, kCadFolder}) {
    ASSERT_TRUE(platform::RemoveFile(folder + "\\" QM_HOST_PROGRAM));
  }
  for (const bool hasClass : {true, false}) {
    SCOPED_TRACE(hasClass);
    if (!hasClass) RemoveValue(Hive::LocalMachine, key, "");
    ASSERT_TRUE(LoadModule());
    LoadCad();
    EXPECT_EQ(Login(), 1);
    EXPECT_EQ(status, 1);
    module.StartCalculation("shaft", "ISO");
    EXPECT_EQ(module.ShowDialogUT("P1"), 0);
    if (kStrictCompanions) {
      EXPECT_EQ(strict::Core().Strict_StoredProtocols(), hasClass ? 1 : 2);
      EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
    }
    EXPECT_EQ(module.LogoutCad(), 1);
    EXPECT_FALSE(HostSide::Runs());
    UnloadModule();
  }
  SetText(Hive::LocalMachine, key, "", *classId);
}

TEST_F(HostExports, TheAssemblyPathIsTheAddIns) {
  char path[1024] = "untouched";
  strict::Core().Strict_SetAnswer("GetAssemblyPath.path", "C:\\Work\\Gearbox.asm");
  strict::Core().Strict_SetAnswer("GetAssemblyPath", "5");
  EXPECT_EQ(module.GetAssemblyPath(path), 5);
  EXPECT_STREQ(path, "C:\\Work\\Gearbox.asm");
  strict::Core().Strict_SetAnswer("GetAssemblyPath", "0");
  EXPECT_EQ(module.GetAssemblyPath(path), 0);
  EXPECT_EQ(module.GetAssemblyPath(nullptr), 0);
}

TEST_F(HostExports, TheAddInsIniFileListsItsStandards) {
  const std::string file = kCadFolder + "\\Standards.ini";
  EXPECT_EQ(module.SetCadIniFile(file.c_str()), 0) << "not there";
  platform::WriteProfileText(file, "General", "Standards", "ISO,DIN");
  EXPECT_EQ(module.SetCadIniFile(file.c_str()), 1);
  platform::WriteProfileText(file, "General", "Standards", "");
  EXPECT_EQ(module.SetCadIniFile(file.c_str()), 0);
}

}  // namespace
}  // namespace quillmar::contract
