// ReceiveMessage and what the notifications bring about.
#include "Calculation.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

class Notifications : public Calculation {
 protected:
  int Receive(int number, const std::string& text = {}) {
    return module.ReceiveMessage(number, text.c_str());
  }

  // The one notification that the module sent; only the strict inter-process library keeps them.
  static void ExpectSent(const std::string& number, const std::string& integer,
                         const std::string& text) {
    if (!kStrictCompanions) return;
    const std::vector<JournalCall> sent = Calls("SendModelessMessage");
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_THAT(sent[0].arguments, ElementsAre(number, integer, text));
  }

  static std::string MeasuredIn(const std::string& unit) {
    Record record;
    record.SetKeyWord("TessioCallParam", "Unit", unit);
    return record.Id();
  }
};

TEST_F(Notifications, DuringAnOptimisationTheCadStaysWhereItIs) {
  EXPECT_EQ(Receive(1008), 1);
  EXPECT_THAT(CalledFunctions(), ElementsAre("OptimWillStart"));
  host.Finish(QM_CALLBACK_NEW_PART, Calculated(kShaft));
  EXPECT_THAT(Calls("GetMainHwndForActivation"), IsEmpty());

  ForgetCalls();
  EXPECT_EQ(Receive(1003), 1);
  EXPECT_THAT(CalledFunctions(), ElementsAre("OptimEnded"));
  host.Finish(QM_CALLBACK_NEW_PART, Calculated(kShaft));
  EXPECT_THAT(Calls("GetMainHwndForActivation"), SizeIs(1));
}

TEST_F(Notifications, AnUpdateChangesTheObject) {
  const std::string id = Calculated(kShaft);
  EXPECT_EQ(Receive(1004, id), 1);
  ASSERT_THAT(Calls("ChangeShaft"), SizeIs(1));
  EXPECT_EQ(Calls("ChangeShaft")[0].arguments[0], id);
  EXPECT_EQ(StateOf(id), 2);
  EXPECT_THAT(host.Commands(), IsEmpty());

  ForgetCalls();
  EXPECT_EQ(Receive(1004, Calculated("99")), 1) << "of no kind";
  EXPECT_EQ(Receive(1004, std::string(300, 'x')), 1);
  EXPECT_THAT(CalledFunctions(), IsEmpty());
}

TEST_F(Notifications, AQuestionIsAnswered) {
  EXPECT_EQ(Receive(2000, "anything"), 1);
  ExpectSent("2001", "8", "");
}

TEST_F(Notifications, OtherNumbersDoNothing) {
  for (const int number : {0, -1, 1005, 2001, 4102, 5555, 6001, 6201}) {
    EXPECT_EQ(Receive(number, "P1"), 1) << number;
  }
  for (const int number : {1004, 4101, 5556, 6000}) {
    EXPECT_EQ(module.ReceiveMessage(number, nullptr), 1) << number;
  }
  EXPECT_THAT(host.Commands(), IsEmpty());
  EXPECT_THAT(Calls("SendModelessMessage"), IsEmpty());
  EXPECT_THAT(Calls("ConnectProtocol"), IsEmpty());
  EXPECT_THAT(Calls("StartMeasure"), IsEmpty());
}

TEST_F(Notifications, TheMeasuredValueGoesBack) {
  strict::Core().Strict_SetAnswer("GetMainHwndForActivation.window", "4713");
  const std::string id = MeasuredIn("mm");
  Receive(1008);
  ForgetCalls();
  EXPECT_EQ(Receive(4101, id), 1);
  EXPECT_EQ(Calls("StartMeasure").at(0).arguments, std::vector<std::string>{"mm"});
  EXPECT_THAT(Calls("GetMainHwndForActivation"), SizeIs(1)) << "also during an optimisation";
  const struct {
    double value;
    const char* text;
  } values[] = {{12.5, "12.5"}, {1.0 / 3.0, "0.33333333"}, {-1e-20, "-1e-20"}};
  for (const auto& each : values) {
    ForgetCalls();
    EXPECT_EQ(module.SetMeasureValue(each.value), 1);
    ExpectSent("4102", "0", id);
    EXPECT_EQ(StateOf(id), 1) << "it waits for the next value";
    Record record(id);
    record.Abandon();
    EXPECT_EQ(record.KeyWord("TessioCallParam", "MeasuredValue"), each.text);
  }
}

TEST_F(Notifications, OneRequestFollowsAnother) {
  const std::string first = MeasuredIn("mm");
  const std::string second = MeasuredIn("in");
  Receive(4101, first);
  Receive(4101, second);
  EXPECT_EQ(StateOf(first), 2);
  EXPECT_EQ(module.SetMeasureValue(1), 1);
  ExpectSent("4102", "0", second);
  EXPECT_EQ(Record(first).KeyWord("TessioCallParam", "MeasuredValue"), kMissing);

  // What was shown in between may have closed the protocol.
  module.ShowDialogUT(second.c_str());
  EXPECT_EQ(module.SetMeasureValue(2), 1);
  { EXPECT_EQ(Record(second).KeyWord("TessioCallParam", "MeasuredValue"), "2"); }

  Receive(4101, first);
  UnloadModule();
  EXPECT_EQ(StateOf(first), 2) << "unloading lets go of it";
}

TEST_F(Notifications, WithoutARequestNothingIsSent) {
  const std::string id = MeasuredIn("mm");
  EXPECT_EQ(module.SetMeasureValue(1), 1);
  Receive(4101, id);
  Erase(id);
  EXPECT_EQ(module.SetMeasureValue(1), 1);
  EXPECT_EQ(StateOf(id), 0);
  Receive(4101, std::string(300, 'x'));
  EXPECT_EQ(module.SetMeasureValue(1), 1);
  EXPECT_THAT(Calls("SendModelessMessage"), IsEmpty());
  EXPECT_THAT(Calls("StartMeasure"), SizeIs(1));
}

TEST_F(Notifications, ListedProtocolsAreConnectedAgain) {
  const std::string first = Calculated(kShaft);
  const std::string second = Calculated(kShaft);
  std::string list;
  {
    Record record;
    record.SetKeyWord("Main", "Protocols", first + ",," + std::string(300, 'x') + "," + second);
    list = record.Id();
  }
  EXPECT_EQ(Receive(5556, list), 1);
  EXPECT_EQ(StateOf(list), 0);
  const std::vector<JournalCall> calls = Calls("ConnectProtocol");
  ASSERT_THAT(calls, SizeIs(2));
  for (const auto& [call, id] : {std::pair{calls[0], first}, {calls[1], second}}) {
    EXPECT_EQ(call.arguments[0], id);
    EXPECT_EQ(call.arguments[1], Record(id).Reference());
  }
}

TEST_F(Notifications, AFileIsExchangedWithTheCad) {
  strict::Core().Strict_SetAnswer("GetFilesData", "-4");
  for (const auto& [number, reply] : {std::pair{6000, "11"}, {6003, "5"}}) {
    SCOPED_TRACE(number);
    std::string id;
    {
      Record record;
      record.SetKeyWord("Data", "InOutFile", "C:\\Exchange.txt").SetKeyWord("Data", "Type", "3x");
      id = record.Id();
    }
    ForgetCalls();
    EXPECT_EQ(Receive(number, id), 1);
    EXPECT_THAT(Calls("GetMainHwndForActivation"), SizeIs(1));
    ASSERT_THAT(Calls("GetFilesData"), SizeIs(1));
    EXPECT_THAT(Calls("GetFilesData")[0].arguments, ElementsAre("C:\\Exchange.txt", "3"));
    ExpectSent("6001", reply, id);
    EXPECT_EQ(StateOf(id), 2);
    EXPECT_EQ(Record(id).KeyWord("Data", "Return"), "-4");
  }
}

TEST_F(Notifications, TheWizardsEndIsPassedOn) {
  EXPECT_EQ(Receive(6100), 1);
  EXPECT_THAT(CalledFunctions(), ElementsAre("StopWD"));
}

// Options are kept in memory until somebody says that they have changed.
TEST_F(Notifications, ChangedOptionsAreReadAgain) {
  const auto pairs = [&] {
    ForgetCalls();
    host.Finish(QM_CALLBACK_NEW_PART, Calculated(kShaft));
    return Calls("InsertShaft").at(0).arguments.back();
  };
  const std::function<int()> readers[] = {[&] { return Receive(6200); },
                                          [&] { return module.ReadConfiguration(); }};
  std::string text = "Fixed";
  for (const auto& read : readers) {
    const std::string before = pairs();
    text += "er";
    SetText(Hive::CurrentUser, kModuleKey + "\\OptBom", "User_Fixed", text);
    EXPECT_EQ(pairs(), before);
    EXPECT_EQ(read(), 1);
    EXPECT_THAT(pairs(), HasSubstr("Fixed=" + text + "\n"));
  }
}

}  // namespace
}  // namespace quillmar::contract
