// What only the strict companions tell: calls of the inter-process library, the start-up program,
// protocols that stay open.
#include <chrono>
#include <thread>

#include "Calculation.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

using namespace std::chrono_literals;

class InterProcess : public Contract {
 protected:
  InterProcess() { EXPECT_TRUE(LoadModule()); }
};

TEST_F(InterProcess, TheLoginIsOneCall) {
  LoadCad();
  ASSERT_EQ(Login(), 1);
  ASSERT_EQ(Login(), 1);
  const std::vector<JournalCall> logins = Calls("LoginToCom");
  ASSERT_THAT(logins, SizeIs(1));
  EXPECT_THAT(logins[0].arguments, ElementsAre("1", "pointer", "Quillmar.dll", "0", "out"));
}

// A number under the user's key and one under the machine's; either may be missing. The user's may
// be a text, which is as good as none.
struct Setting {
  std::optional<std::uint32_t> user;
  std::optional<std::uint32_t> machine;
  bool userAsText = false;

  void Write(const std::string& key, const char* name) const {
    RemoveValue(Hive::CurrentUser, key, name);
    RemoveValue(Hive::LocalMachine, key, name);
    if (user && userAsText) SetText(Hive::CurrentUser, key, name, std::to_string(*user));
    if (user && !userAsText) SetNumber(Hive::CurrentUser, key, name, *user);
    if (machine) SetNumber(Hive::LocalMachine, key, name, *machine);
  }
};

// Names a test by its setting.
std::string NameOf(const Setting& setting) {
  const auto shown = [](const std::optional<std::uint32_t>& number) {
    return number ? std::to_string(*number) : std::string("None");
  };
  return "User" + shown(setting.user) + (setting.userAsText ? "AsText" : "") + "Machine" +
         shown(setting.machine);
}

struct ExitSetting {
  Setting setting;
  const char* sent;
};

class Logout : public Calculation, public testing::WithParamInterface<ExitSetting> {
 protected:
  void ExpectExitRequest(const char* sent) {
    const std::vector<JournalCall> notes = Calls("SendModelessMessage");
    ASSERT_THAT(notes, SizeIs(1));
    ASSERT_THAT(notes[0].arguments, SizeIs(3));
    EXPECT_EQ(notes[0].arguments[0], "5000");
    EXPECT_EQ(notes[0].arguments[1], "3");
    const std::string id = notes[0].arguments[2];
    EXPECT_EQ(StateOf(id), 2);
    EXPECT_EQ(Record(id).Global("Exit"), sent);
  }
};

TEST_P(Logout, SendsTheHostItsExitRequest) {
  GetParam().setting.Write(kModuleKey + "\\Quillmar", "EndUTOnExit");
  EXPECT_EQ(module.LogoutCad(), 1);
  ExpectExitRequest(GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(ByHive, Logout,
                         testing::Values(ExitSetting{{1, {}}, "1"}, ExitSetting{{0, 1}, "1"},
                                         ExitSetting{{{}, 1}, "1"}, ExitSetting{{{}, {}}, "0"},
                                         ExitSetting{{0, 0}, "0"}, ExitSetting{{0x10000, {}}, "0"},
                                         ExitSetting{{0x10002, {}}, "1"},
                                         ExitSetting{{1, {}, true}, "0"},
                                         ExitSetting{{0, 1, true}, "1"}),
                         [](const auto& info) { return NameOf(info.param.setting); });

class Ending : public Logout {};

TEST_F(Ending, UnloadingWithoutALogoutSendsTheRequestOnce) {
  SetNumber(Hive::CurrentUser, kModuleKey + "\\Quillmar", "EndUTOnExit", 1);
  UnloadModule();
  EXPECT_THAT(Calls("SendModelessMessage"), SizeIs(1));
}

TEST_F(Ending, UnloadingAfterALogoutDoesNotRepeatIt) {
  EXPECT_EQ(module.LogoutCad(), 1);
  ForgetCalls();
  UnloadModule();
  EXPECT_THAT(CalledFunctions(), IsEmpty());
}

TEST_F(Ending, AfterALogoutNoHostIsStarted) {
  EXPECT_EQ(module.LogoutCad(), 1);
  host.End();
  EXPECT_EQ(module.ShowDialogUT("P1"), 0);
  EXPECT_FALSE(HostSide::Runs());
}

TEST_F(InterProcess, WithoutAHostNobodyIsAskedToExit) {
  LoadCad();
  ASSERT_EQ(Login(), 1);
  ForgetCalls();
  EXPECT_EQ(module.LogoutCad(), 1);
  EXPECT_THAT(CalledFunctions(), IsEmpty());
}

TEST_F(InterProcess, ACalculationStartsTheHost) {
  LoadCad();
  ASSERT_EQ(Login(), 1);
  EXPECT_FALSE(HostSide::Runs());
  module.StartCalculation("shaft", "ISO");
  ASSERT_TRUE(HostSide::Runs());
  host = HostSide::Attach();
  EXPECT_THAT(host.Commands(), ElementsAre(testing::StartsWith("2(\"")));
  EXPECT_THAT(host.Calls(), testing::Contains(testing::StartsWith("29(2,")));
}

struct ProgramSetting {
  Setting setting;
  bool started;
};

class StartUpProgram : public Contract, public testing::WithParamInterface<ProgramSetting> {
 protected:
  // The program leaves a trace in its working folder, which must be its own. Its end is waited for
  // only where the system can tell that it is idle.
  static bool LeavesATraceWithin(std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!platform::FileExists(kTrace) && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(20ms);
    }
    return platform::RemoveFile(kTrace);
  }

  static inline const std::string kTrace = kSuiteFolder + "\\Salvora\\started.txt";
};

TEST_P(StartUpProgram, RunsUnlessItIsSuppressed) {
  GetParam().setting.Write(kModuleKey + "\\Salvora", "SALVORA");
  ASSERT_TRUE(LoadModule());
  LoadCad();
  ASSERT_EQ(Login(), 1);
  EXPECT_EQ(LeavesATraceWithin(GetParam().started ? 10s : 300ms), GetParam().started);
  ASSERT_EQ(Login(), 1);
  EXPECT_FALSE(LeavesATraceWithin(300ms)) << "a second login shows nothing";
}

INSTANTIATE_TEST_SUITE_P(ByHive, StartUpProgram,
                         testing::Values(ProgramSetting{{{}, {}}, true},
                                         ProgramSetting{{1, {}}, false},
                                         ProgramSetting{{{}, 1}, false},
                                         ProgramSetting{{0, 1}, true}, ProgramSetting{{2, 1}, true},
                                         ProgramSetting{{1, {}, true}, true},
                                         ProgramSetting{{0, 1, true}, false}),
                         [](const auto& info) { return NameOf(info.param.setting); });

class Keeping : public Calculation {};

TEST_F(Keeping, NoProtocolStaysOpen) {
  const std::string inserted = Calculated(kParametricPart);
  host.Finish(QM_CALLBACK_NEW_PART, inserted);
  host.Finish(QM_CALLBACK_RECALCULATED, inserted);
  strict::Core().Strict_SetAnswer("InsertShaft", "0");
  host.Finish(QM_CALLBACK_NEW_PART, Calculated(kShaft));
  module.StartCalculation("shaft", "ISO");
  module.ObtainProtocol("Unknown");
  EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
}

TEST_F(Keeping, WhatAClosedWindowHeldIsNotObtained) {
  std::string reference;
  {
    Record record;
    Fill(record, kShaft);
    reference = record.Reference();
    strict::Core().Strict_SetAnswer("GetProtocol.text", reference.c_str());
    record.Abandon();
    strict::Core().Strict_HoldByCalculation(record.Id().c_str(), 987654321);
  }
  EXPECT_EQ(module.ObtainProtocol("Shaft:1"), 0);
  EXPECT_THAT(Calls("Com_GetOwnerHWND"), SizeIs(1));
}

TEST_F(Keeping, BuffersGrowByTheirSteps) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetGlobal("Path", std::string(2047, 'p')); }
  ForgetCalls();
  host.Finish(QM_CALLBACK_NEW_PART, id);
  std::vector<std::string> sizes;
  for (const JournalCall& call : Calls("Com_GetGlobalData")) {
    if (call.arguments[1] == "Path") sizes.push_back(call.arguments[2]);
  }
  ASSERT_GE(sizes.size(), 3u);
  sizes.resize(3);
  // 2047 is one less than 2048: it might have been cut.
  EXPECT_THAT(sizes, ElementsAre("[1024]", "[2048]", "[3072]"));
}

class LackingCompanions : public Contract {
 protected:
  // Puts a companion that lacks `function` into the suite's folder.
  static void Install(const std::string& companion, const std::string& function) {
    platform::RemoveFile(kSuiteFolder + "\\" + companion);
    ASSERT_TRUE(MoveFileTo(kCadFolder + "\\Lacking\\" + function + "\\" + companion, kSuiteFolder,
                           companion));
  }
};

TEST_F(LackingCompanions, TheInterProcessLoginWorksWithoutTheLastFunction) {
  Install("Tessio.dll", "GetCJCallParam");
  ASSERT_TRUE(LoadModule());
  LoadCad();
  EXPECT_EQ(Login(), 1);
  EXPECT_THAT(Calls("LoginToCom"), SizeIs(1));
}

TEST_F(LackingCompanions, NoOwnerIsAskedWhenTheQueryIsMissing) {
  Install("Keelcomm.dll", "Com_GetOwnerHWND");
  StartSession();
  strict::Core().Strict_HoldByCalculation("Held", 987654321);
  strict::Core().Strict_SetAnswer("GetProtocol.text", "Held<@PID>a<@EL>");
  EXPECT_EQ(module.ObtainProtocol("Shaft:1"), 0);
}

}  // namespace
}  // namespace quillmar::contract
