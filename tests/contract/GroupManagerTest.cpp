// The group manager logs in: the program itself is named Grupova.exe and offers the driver
// functions.
#include "Contract.h"
#include "platform/Messages.h"

namespace quillmar::contract {
namespace {

const std::string kSession = kModuleKey + "\\Quillmar";

class GroupManager : public Contract {
 protected:
  GroupManager() {
    host = HostSide::Start();
    EXPECT_TRUE(LoadModule());
  }

  static LoginArguments Arguments(const char* name = "Grupova.exe", int modelFileKind = 5) {
    LoginArguments arguments;
    arguments.cadModuleName = name;
    arguments.modelFileKind = modelFileKind;
    return arguments;
  }

  // The session's mode, as the host learns it.
  std::string Mode() {
    for (const std::string& call : host.Calls()) {
      if (call.rfind("29(", 0) == 0) return call.substr(3, call.find(',') - 3);
    }
    return "none";
  }
};

TEST_F(GroupManager, UsesItsArgumentsWhenNobodyLoggedInBefore) {
  for (const char* name : {"Grupova.exe", "GRUPOVA.EXE"}) {
    SCOPED_TRACE(name);
    host.Forget();
    ASSERT_EQ(Login(Arguments(name)), 1);
    EXPECT_NE(module.GetCadHinstance(), nullptr);
    EXPECT_EQ(status, 1);
    EXPECT_THAT(host.Calls(), testing::IsSupersetOf({R"(47("models","prt,fea"))", "30(17)"}));
    EXPECT_EQ(Mode(), "130");
    UnloadModule();
    ASSERT_TRUE(LoadModule());
  }
  EXPECT_FALSE(KeyExists(Hive::CurrentUser, kSession)) << "nothing is written";
  EXPECT_EQ(TextValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp"), std::nullopt);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kModuleKey + "\\Strict\\OptGeneral2", "LocalFileName"),
            std::nullopt);
  EXPECT_THAT(Calls("LoginToCom"), IsEmpty());
}

TEST_F(GroupManager, TakesOverTheLastSession) {
  SetNumber(Hive::CurrentUser, kSession, "LastLoggedShowFlag", 0x50);
  SetText(Hive::CurrentUser, kSession, "LastLoggedModelExt", "mod");
  SetText(Hive::CurrentUser, kSession, "LastLoggedFeatureExtension", "udf");
  SetText(Hive::CurrentUser, kSession, "LastLoggedModelDirName", "lib");
  ASSERT_EQ(Login(Arguments()), 1);
  EXPECT_THAT(host.Calls(), testing::IsSupersetOf({R"(47("lib","mod,udf"))", "30(80)"}));
}

TEST_F(GroupManager, KeepsAnArgumentWhoseValueCannotBeRead) {
  SetText(Hive::CurrentUser, kSession, "LastLoggedShowFlag", "a text");
  SetNumber(Hive::CurrentUser, kSession, "LastLoggedModelExt", 7);
  SetText(Hive::CurrentUser, kSession, "LastLoggedFeatureExtension", "udf");
  ASSERT_EQ(Login(Arguments()), 1);
  EXPECT_THAT(host.Calls(), testing::IsSupersetOf({R"(47("models","prt,udf"))", "30(17)"}));
}

TEST_F(GroupManager, WithoutACadItIsAnOrdinarySession) {
  ASSERT_EQ(Login(Arguments("Grupova.exe", -1)), 1);
  EXPECT_EQ(Mode(), "2");
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kSession, "LastLoggedShowFlag"), 0x11u);
  EXPECT_NE(TextValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp"), std::nullopt);
  if (kStrictCompanions) {
    EXPECT_THAT(Calls("LoginToCom"), SizeIs(1));
  }
}

TEST_F(GroupManager, WorkingCopiesAreKept) {
  ASSERT_EQ(Login(Arguments()), 1);
  std::string id;
  std::string reference;
  {
    Record record;
    record.SetKeyWord("Main", "DataFile", "KeelData|userpart").SetGlobal("TypeOfPart", "9");
    record.SetKeyWord("Cadx", "ReallySmartPart", "1");
    id = record.Id();
    reference = record.Reference();
  }
  Erase(id);
  EXPECT_EQ(module.IsSmartPart(reference.c_str()), 1);
  EXPECT_EQ(StateOf(id), 2);

  strict::Core().Strict_SetAnswer("GetPart.partName", "Selected:1");
  strict::Core().Strict_SetAnswer("GetPart.text", reference.c_str());
  strict::Core().Strict_SetAnswer("GetProtocol(Selected:1).text", reference.c_str());
  Erase(id);
  host.Forget();
  module.CallUTFunction(4);
  platform::PumpMessages();
  EXPECT_THAT(host.Commands(), IsEmpty()) << "a user part is not calculated";
  ASSERT_EQ(StateOf(id), 2);
  EXPECT_EQ(Record(id).KeyWord("Cadx", "FromCad"), kMissing);
  EXPECT_EQ(Record(id).KeyWord("Cadx", "Drawn"), "1");
  // There is no assembly to scan.
  for (const int number : {7, 10}) {
    module.CallUTFunction(number);
    platform::PumpMessages();
  }
  EXPECT_THAT(Calls("GetAssembly"), IsEmpty());
  EXPECT_THAT(host.Commands(), IsEmpty());
}

}  // namespace
}  // namespace quillmar::contract
