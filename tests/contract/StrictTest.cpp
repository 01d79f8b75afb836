// What only the strict companions tell: calls of the inter-process library, the start-up program,
// protocols that stay open.
#include "Calculation.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

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

struct ExitSetting {
  std::optional<std::uint32_t> user;
  std::optional<std::uint32_t> machine;
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
  const std::string key = kModuleKey + "\\Quillmar";
  RemoveValue(Hive::LocalMachine, key, "EndUTOnExit");
  if (GetParam().user) SetNumber(Hive::CurrentUser, key, "EndUTOnExit", *GetParam().user);
  if (GetParam().machine) SetNumber(Hive::LocalMachine, key, "EndUTOnExit", *GetParam().machine);
  EXPECT_EQ(module.LogoutCad(), 1);
  ExpectExitRequest(GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(ByHive, Logout,
                         testing::Values(ExitSetting{1, {}, "1"}, ExitSetting{0, 1, "1"},
                                         ExitSetting{{}, 1, "1"}, ExitSetting{{}, {}, "0"},
                                         ExitSetting{0, 0, "0"}, ExitSetting{0x10000, {}, "0"},
                                         ExitSetting{0x10002, {}, "1"}));

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
  host = HostSide::Start();
  EXPECT_THAT(host.Commands(), ElementsAre(testing::StartsWith("2(\"")));
  EXPECT_THAT(host.Calls(), testing::Contains(testing::StartsWith("29(2,")));
}

struct ProgramSetting {
  std::optional<std::uint32_t> user;
  std::optional<std::uint32_t> machine;
  bool started;
};

class StartUpProgram : public Contract, public testing::WithParamInterface<ProgramSetting> {};

TEST_P(StartUpProgram, RunsUnlessItIsSuppressed) {
  const std::string key = kModuleKey + "\\Salvora";
  const std::string trace = kSuiteFolder + "\\Salvora\\started.txt";
  RemoveValue(Hive::CurrentUser, key, "SALVORA");
  if (GetParam().user) SetNumber(Hive::CurrentUser, key, "SALVORA", *GetParam().user);
  if (GetParam().machine) SetNumber(Hive::LocalMachine, key, "SALVORA", *GetParam().machine);
  ASSERT_TRUE(LoadModule());
  LoadCad();
  ASSERT_EQ(Login(), 1);
  EXPECT_EQ(platform::FileExists(trace), GetParam().started) << "it writes into its own folder";
  platform::RemoveFile(trace);
  ASSERT_EQ(Login(), 1);
  EXPECT_FALSE(platform::FileExists(trace)) << "a second login shows nothing";
}

INSTANTIATE_TEST_SUITE_P(ByHive, StartUpProgram,
                         testing::Values(ProgramSetting{{}, {}, true}, ProgramSetting{1, {}, false},
                                         ProgramSetting{{}, 1, false}, ProgramSetting{0, 1, true},
                                         ProgramSetting{2, 1, true}));

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
