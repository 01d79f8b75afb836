// The smaller exports.
#include "Calculation.h"
#include "platform/Messages.h"

namespace quillmar::contract {
namespace {

class Commands : public Calculation {
 protected:
  // A part of the CAD: its name stands for the reference text of a protocol that is not stored.
  // Returns the identifier.
  std::string PartInCad(const char* name) {
    std::string id;
    std::string reference;
    {
      Record record;
      Fill(record, kShaft);
      id = record.Id();
      reference = record.Reference();
    }
    Erase(id);
    const std::string key = std::string("GetProtocol(") + name + ").text";
    strict::Core().Strict_SetAnswer(key.c_str(), reference.c_str());
    return id;
  }
};

TEST_F(Commands, ShowDialogClosesTheProtocolAndPassesTheHostsAnswer) {
  host.Answer("2", "42");
  Record record;
  record.Abandon();
  EXPECT_EQ(module.ShowDialogUT(record.Id().c_str()), 42);
  EXPECT_EQ(StateOf(record.Id()), 2);
  EXPECT_THAT(host.Commands(), ElementsAre("2(\"" + record.Id() + "\")"));
  EXPECT_EQ(module.ShowDialogUT(nullptr), 42);
  EXPECT_EQ(host.Commands().back(), R"(2(""))");
}

TEST_F(Commands, QueuedFunctionsRunWhenTheMessageIsHandled) {
  EXPECT_EQ(module.CallUTFunction(0), 1);
  EXPECT_THAT(host.Commands(), IsEmpty());
  platform::PumpMessages();
  EXPECT_THAT(host.Commands(), ElementsAre("19(0)"));

  host.Forget();
  for (const int number : {11, -1, 5000}) {
    EXPECT_EQ(module.CallUTFunction(number), 1);
    platform::PumpMessages();
  }
  EXPECT_THAT(host.Calls(), IsEmpty());

  // One number is kept; each message runs what stands there then.
  module.CallUTFunction(11);
  module.CallUTFunction(0);
  platform::PumpMessages();
  EXPECT_THAT(host.Commands(), ElementsAre("19(0)", "19(0)"));
}

TEST_F(Commands, DrawingFunctionsAreBoundLater) {
  EXPECT_EQ(module.Set2dFileType(2), 1);
  EXPECT_EQ(module.Set2dFileType(-1), 1);
  EXPECT_NE(module.GetCadHinstance(), nullptr);
}

TEST_F(Commands, ObtainingAProtocolMarksItAsDrawn) {
  const std::string id = PartInCad("Shaft:1");
  EXPECT_EQ(module.ObtainProtocol("Shaft:1"), 1);
  const std::vector<JournalCall> asked = Calls("GetProtocol");
  ASSERT_FALSE(asked.empty());
  EXPECT_EQ(asked[0].arguments[0], "Shaft:1");
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "FromCad"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "Drawn"), "1");
  EXPECT_EQ(record.Global("Changed"), "0");
  EXPECT_EQ(record.Global("OldModelId"), "Shaft_1");
  EXPECT_EQ(record.Parameter("d"), "20 mm");
}

TEST_F(Commands, ObtainingReplacesWhatNobodyHolds) {
  const std::string id = PartInCad("Shaft:1");
  { Record(id).SetKeyWord("Cadx", "Stale", "1").SetGlobal("OwnerHWND", "123456789"); }
  EXPECT_EQ(module.ObtainProtocol("Shaft:1"), 1);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "Stale"), kMissing);
  EXPECT_EQ(record.Global("Changed"), "0");
}

TEST_F(Commands, ObtainingReadsThePartsVisibility) {
  const std::string id = PartInCad("Shaft:1");
  strict::Core().Strict_SetAnswer("GetPartsVisibility.text", "Nut,0,Bolt,1,");
  EXPECT_EQ(module.ObtainProtocol("Shaft:1"), 1);
  const Record record(id);
  EXPECT_THAT(record.Parameter("VXP_FS_Nut"), testing::StartsWith("0"));
  EXPECT_THAT(record.Parameter("VXP_FS_Bolt"), testing::StartsWith("1"));
}

TEST_F(Commands, NothingIsObtainedFromWhatIsNoReference) {
  EXPECT_EQ(module.ObtainProtocol("Empty:1"), 0);
  strict::Core().Strict_SetAnswer("GetProtocol.text", "no marker<@EL>");
  EXPECT_EQ(module.ObtainProtocol("Odd:1"), 0);
  strict::Core().Strict_SetAnswer("GetProtocol.text", "<@PID>a<@EL>");
  EXPECT_EQ(module.ObtainProtocol("Nameless:1"), 0);
  strict::Core().Strict_SetAnswer("GetProtocol", "0");
  EXPECT_EQ(module.ObtainProtocol("Gone:1"), 0);
}

class DrawingFunctions : public Contract {};

TEST_F(DrawingFunctions, AMissingOneEndsTheUseOfTheDriverUntilTheNextLogin) {
  ASSERT_TRUE(LoadModule());
  for (const char* file : {"Insert2dPart.dll", "Change2dPart.dll"}) {
    SCOPED_TRACE(file);
    LoadCad(std::string("Lacking\\") + file);
    LoginArguments arguments;
    arguments.cadModuleName = file;
    ASSERT_EQ(Login(arguments), 1);
    EXPECT_EQ(module.Set2dFileType(2), 0);
    EXPECT_EQ(module.GetCadHinstance(), nullptr);
    EXPECT_EQ(module.ObtainProtocol("Shaft:1"), 0);
  }
  const QmModule whole = LoadCad();
  EXPECT_EQ(Login(), 1);
  EXPECT_EQ(module.GetCadHinstance(), whole);
  EXPECT_EQ(module.Set2dFileType(2), 1);
}

}  // namespace
}  // namespace quillmar::contract
