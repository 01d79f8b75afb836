// A recalculated protocol changes its CAD object: callback code 160.
#include "Calculation.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

class Update : public Calculation {
 protected:
  using Calculation::Calculation;

  void Recalculated(const std::string& id) { host.Finish(QM_CALLBACK_RECALCULATED, id); }
};

class UpdateKeepingIdentity : public Update {
 protected:
  static LoginArguments KeepIdentity() {
    LoginArguments arguments;
    arguments.showFlag = 0x40;
    return arguments;
  }
  UpdateKeepingIdentity() : Update(KeepIdentity()) {}
};

TEST_F(Update, ASharedPartGetsAProtocolIdentityOfItsOwn) {
  const std::string id = Calculated(kParametricPart);
  { Record(id).SetGlobal("OldModelId", "SHAFT_1"); }
  const std::string list = ParameterList(Record(id));
  Recalculated(id);
  const std::vector<std::string> call = OnlyCall("ChangeParamPart", 3);
  ASSERT_THAT(call, SizeIs(10));
  EXPECT_NE(call[3], id);
  EXPECT_EQ(StateOf(call[3]), 0) << "the identifier alone is taken, no protocol stays";
  EXPECT_THAT(call, ElementsAre(id, ModelPath(), list, call[3], "0", SharedFile(), Caption(), "2",
                                Pairs(), "0"));
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()"));
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "ModelError"), "0");
  EXPECT_EQ(record.KeyWord("Cadx", "Loop"), "0");
}

TEST_F(UpdateKeepingIdentity, TheReferenceKeepsItsIdentifierAndAnotherModelIsNoticed) {
  const std::string id = Calculated(kParametricPart);
  { Record(id).SetGlobal("OldModelId", "Other"); }
  const std::string list = ParameterList(Record(id));
  Recalculated(id);
  EXPECT_THAT(
      OnlyCall("ChangeParamPart", 3),
      ElementsAre(id, ModelPath(), list, id, "0", SharedFile(), Caption(), "2", Pairs(), "1"));
}

TEST_F(Update, ALocalPartKeepsItsFileWhileTheModelStays) {
  const std::string id = Calculated(kParametricPart);
  { Record(id).SetKeyWord("Cadx", "ReallySmartPart", "1").SetGlobal("OldModelId", "Shaft_1"); }
  Recalculated(id);
  const std::vector<std::string> call = OnlyCall("ChangeParamPart", 3);
  ASSERT_THAT(call, SizeIs(10));
  EXPECT_EQ(call[3], id);
  EXPECT_EQ(call[4], "1");
  EXPECT_EQ(call[5], "");
}

TEST_F(Update, AShaft) {
  const std::string id = Calculated(kShaft);
  const std::string list = ParameterList(Record(id));
  Recalculated(id);
  EXPECT_THAT(OnlyCall("ChangeShaft", 3),
              ElementsAre(id, ModelPath(), list, id, Caption(), "2", Pairs()));
}

TEST_F(Update, FeatureStatesFollowTheChange) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetParameter("VXP_FS_Keyway", "1", "").SetParameter("VXP_FS_Hole", "0", ""); }
  std::string states;
  for (const auto& [name, value] : Record(id).Parameters()) {
    if (name.rfind("VXP_FS_", 0) != 0) continue;
    states += (states.empty() ? "" : ",") + name.substr(7) + "," + value;
  }
  Recalculated(id);
  const std::vector<JournalCall> calls = Calls("SetFeaturesState");
  ASSERT_THAT(calls, SizeIs(1));
  EXPECT_THAT(calls[0].arguments, ElementsAre(id, states));
}

TEST_F(Update, TheChangeStateDecidesWhatTheCadIsTold) {
  const std::string reconnected = Calculated(kShaft);
  { Record(reconnected).SetGlobal("Changed", "1"); }
  Recalculated(reconnected);
  EXPECT_THAT(OnlyCall("ConnectProtocol", 1), ElementsAre(reconnected, reconnected));
  EXPECT_THAT(Calls("ChangeShaft"), IsEmpty());

  const std::string untouched = Calculated(kShaft);
  { Record(untouched).SetGlobal("Changed", "2"); }
  ForgetCalls();
  host.Forget();
  Recalculated(untouched);
  EXPECT_THAT(Calls("ConnectProtocol"), IsEmpty());
  EXPECT_THAT(Calls("ChangeShaft"), IsEmpty());
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()")) << "and that is a success";
}

TEST_F(Update, AnActiveConfigurationIsOnlySwitchedOn) {
  const std::string id = Calculated(kParametricPart);
  { Record(id).SetKeyWord("Configurations", "Active", "Long"); }
  Recalculated(id);
  EXPECT_THAT(OnlyCall("SetActiveConfiguration", 2), ElementsAre(id, "Long", id));
  EXPECT_THAT(Calls("ChangeParamPart"), IsEmpty());
}

TEST_F(Update, AFailureKeepsTheChoiceOfThePart) {
  const std::string id = Calculated(kShaft);
  strict::Core().Strict_SetAnswer("ChangeShaft", "0");
  Recalculated(id);
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", "2(\"" + id + "\")"));
  EXPECT_EQ(Record(id).KeyWord("Cadx", "ReallySmartPart"), "0");
}

}  // namespace
}  // namespace quillmar::contract
