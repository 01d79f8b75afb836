// What the dispatcher does around the parts: lists, bookkeeping, other codes.
#include "Calculation.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

class Dispatch : public Calculation {};

TEST_F(Dispatch, HandlesTheListInOrderAndPassesByWhatDoesNotOpen) {
  const std::string first = Calculated(kShaft);
  const std::string second = Calculated(kShaft);
  host.Finish(QM_CALLBACK_NEW_PART, first + ",," + second + ",");
  const std::vector<JournalCall> inserts = Calls("InsertShaft");
  ASSERT_THAT(inserts, SizeIs(2));
  EXPECT_EQ(inserts[0].arguments[0], first);
  EXPECT_EQ(inserts[1].arguments[0], second);
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()"));
}

TEST_F(Dispatch, BringsTheCadWindowToTheFront) {
  strict::Core().Strict_SetAnswer("GetMainHwndForActivation.window", "4712");
  host.Finish(QM_CALLBACK_NEW_PART, Calculated(kShaft));
  EXPECT_THAT(Calls("GetMainHwndForActivation"), SizeIs(1));
  if (kStrictCompanions) {
    const std::vector<JournalCall> raised = Calls("McSetForegroundWindow");
    ASSERT_THAT(raised, SizeIs(1));
    EXPECT_THAT(raised[0].arguments, ElementsAre("4712"));
  }
}

TEST_F(Dispatch, AnUnknownCodeDoesTheBookkeepingAlone) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Hexaplan", "FromSymbols", "1"); }
  host.Finish(151, id);
  EXPECT_THAT(Calls("InsertShaft"), IsEmpty());
  EXPECT_THAT(Calls("ChangeShaft"), IsEmpty());
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", "2(\"" + id + "\")"));
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "ReallySmartPart"), kMissing);
  EXPECT_EQ(record.KeyWord("Cadx", "recalc"), "1");
}

TEST_F(Dispatch, ANewViewNeedsItsParent) {
  const std::string id = Calculated(kShaft);
  host.Finish(QM_CALLBACK_NEW_VIEW, id);
  EXPECT_THAT(Calls("InsertShaft"), IsEmpty());
  EXPECT_EQ(host.Commands().back(), "2(\"" + id + "\")");
}

// The setting stands beside the options, whose place the last application to name itself has set.
TEST_F(Dispatch, DisabledNewViewsBecomePlainParts) {
  std::string disabledAt;
  const auto disable = [&](const char* application) {
    if (!disabledAt.empty()) RemoveValue(Hive::LocalMachine, disabledAt, "DisableNewView");
    disabledAt = kModuleKey + application + "\\Quillmar";
    SetNumber(Hive::LocalMachine, disabledAt, "DisableNewView", 1);
  };
  const auto insertView = [&] {
    const std::string id = Calculated(kShaft);
    {
      Record(id)
          .SetKeyWord("Cadx", "NewView", "1")
          .SetKeyWord("LinksFrom", "NewView", "Gone@NewView");
    }
    ForgetCalls();
    host.Finish(QM_CALLBACK_NEW_VIEW, id);
    return id;
  };
  const auto expectPlainPart = [&] {
    const Record record(insertView());
    EXPECT_THAT(Calls("InsertShaft"), SizeIs(1)) << disabledAt;
    EXPECT_EQ(record.KeyWord("Cadx", "NewView"), kMissing);
    EXPECT_EQ(record.KeyWord("LinksFrom", "NewView"), kMissing);
    EXPECT_EQ(record.Global("BOM7"), "1");
  };
  disable("");
  expectPlainPart();
  module.SetOptions(nullptr, 0, "Sheet", "", 0);
  EXPECT_EQ(Record(insertView()).KeyWord("LinksFrom", "NewView"), "Gone@NewView")
      << "that was another application's";
  disable("\\Sheet");
  expectPlainPart();
  module.CreateFileName("", nullptr, nullptr);
  disable("\\Strictcad");
  expectPlainPart();
  RemoveValue(Hive::LocalMachine, disabledAt, "DisableNewView");
  SetText(Hive::LocalMachine, disabledAt, "DisableNewView", "1");
  EXPECT_EQ(Record(insertView()).KeyWord("LinksFrom", "NewView"), "Gone@NewView")
      << "a text is no number";
  RemoveValue(Hive::LocalMachine, disabledAt, "DisableNewView");
}

TEST_F(Dispatch, AChangedTypeUpdatesAndThePasteTellsTheHost) {
  const std::string changed = Calculated(kShaft);
  { Record(changed).SetKeyWord("Cadx", "Update", "1"); }
  host.Finish(QM_CALLBACK_CLIPBOARD_OR_CHANGED_TYPE, changed);
  EXPECT_THAT(Calls("ChangeShaft"), SizeIs(1));
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()"));

  const std::string source = Calculated(kShaft);
  {
    Record clipboard("KEELCLIP");
    clipboard.SetKeyWord("Object", "ProtID", source);
  }
  const std::string pasted = Calculated(kShaft);
  { Record(pasted).SetKeyWord("Cadx", "PartName", "Shaft:1"); }
  ForgetCalls();
  host.Forget();
  host.Finish(QM_CALLBACK_CLIPBOARD_OR_CHANGED_TYPE, pasted);
  EXPECT_EQ(OnlyCall("ConnectProtocol", 1).at(0), source);
  EXPECT_THAT(Calls("InsertShaft"), SizeIs(1));
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", "19(-1)"));
  EXPECT_EQ(Record(pasted).KeyWord("Cadx", "PartName"), kMissing);
}

TEST_F(Dispatch, TheHostIsToldToUpdateAll) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Hexaplan", "UpdateAll", "1"); }
  host.Finish(QM_CALLBACK_NEW_PART, id);
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", "48()"));
}

TEST_F(Dispatch, WhoAskedToKnowIsTold) {
  RemoveValue(Hive::CurrentUser, kModuleKey + "\\Fendrake", "Done");
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Special", "LetMeKnow", "1").SetKeyWord("Special", "Other", "x"); }
  host.Finish(QM_CALLBACK_NEW_PART, id);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kModuleKey + "\\Fendrake", "Done"), 1u);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Special", "LetMeKnow"), kMissing);
  EXPECT_EQ(record.KeyWord("Special", "Other"), kMissing);
  EXPECT_EQ(record.KeyWord("Object", "ProtID"), id);
  EXPECT_EQ(record.KeyWord("Cadx", "Drawn"), "1");
}

TEST_F(Dispatch, AnyOtherRequestIsErasedAndNotAnswered) {
  RemoveValue(Hive::CurrentUser, kModuleKey + "\\Fendrake", "Done");
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Special", "LetMeKnow", "0"); }
  host.Finish(QM_CALLBACK_NEW_PART, id);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kModuleKey + "\\Fendrake", "Done"), std::nullopt);
  EXPECT_EQ(Record(id).KeyWord("Special", "LetMeKnow"), kMissing);
}

TEST_F(Dispatch, TheDataWizardsProtocolIsReconnected) {
  const std::string wizard = Calculated(kShaft);
  const std::string id = Calculated(kShaft);
  { Record(id).SetGlobal("WDOperation", "2").SetGlobal("WDProtocol", wizard); }
  host.Finish(QM_CALLBACK_NEW_PART, id);
  EXPECT_THAT(OnlyCall("ConnectProtocol", 1), ElementsAre(wizard, wizard));
  EXPECT_EQ(Record(id).Global("WDOperation"), "");
  EXPECT_EQ(StateOf(wizard), 2);
}

TEST_F(Dispatch, AProtocolThatIsToReconnectItselfStaysOpen) {
  for (const int code : {QM_CALLBACK_NEW_PART, QM_CALLBACK_CLIPBOARD_OR_CHANGED_TYPE}) {
    SCOPED_TRACE(code);
    const std::string id = Calculated(kShaft);
    {
      Record(id).SetGlobal("WDOperation", "2").SetGlobal("WDProtocol", id);
      Record("KEELCLIP").SetKeyWord("Object", "ProtID", id);
    }
    ForgetCalls();
    host.Finish(code, id);
    EXPECT_THAT(Calls("ConnectProtocol"), SizeIs(code == QM_CALLBACK_NEW_PART ? 1 : 2));
    EXPECT_THAT(Calls("InsertShaft"), SizeIs(1));
    EXPECT_EQ(Record(id).Global("BOM5"), "2.5") << "written after the part was inserted";
  }
}

TEST_F(Dispatch, AKeptProtocolIsMarkedAsDrawn) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Cadx", "DoNotErase", "1"); }
  host.Finish(QM_CALLBACK_NEW_PART, id);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "Drawn"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "FromCad"), "1");
}

TEST_F(Dispatch, ABoltedConnectionGoesToItsLibrary) {
  for (const char* dataFile : {"KEELDATA|THRJOIN", "thrjoin"}) {
    SCOPED_TRACE(dataFile);
    const std::string id = Calculated(kShaft);
    { Record(id).SetKeyWord("Main", "DataFile", dataFile).SetKeyWord("MCWParts", "Bolt", "B"); }
    ForgetCalls();
    host.Forget();
    host.Finish(QM_CALLBACK_NEW_PART, id);
    EXPECT_EQ(StateOf(id), 2);
    EXPECT_THAT(Calls("InsertShaft"), IsEmpty());
    EXPECT_THAT(Calls("GetMainHwndForActivation"), SizeIs(1));
    EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()"));
    if (kStrictCompanions) {
      const std::vector<JournalCall> inserts = Calls("InsertBoltedConnection");
      ASSERT_THAT(inserts, SizeIs(1));
      EXPECT_THAT(inserts[0].arguments, ElementsAre(id));
    }
  }
}

TEST_F(Dispatch, AReferencedPartIsTakenFromTheCad) {
  std::string id;
  std::string reference;
  {
    Record record;
    Fill(record, kShaft);
    id = record.Id();
    reference = record.Reference();
  }
  Erase(id);
  strict::Core().Strict_SetAnswer("GetProtocol(Shaft:1).text", reference.c_str());
  host.Finish(QM_CALLBACK_FROM_REFERENCE, "Shaft:1");
  EXPECT_THAT(Calls("GetProtocol"), SizeIs(2)) << "the second call brings the text";
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", R"(39("Shaft:1"))"));
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "Drawn"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "FromCad"), "1");
  EXPECT_EQ(record.Global("BOM5"), "2.5");
}

TEST_F(Dispatch, AReferenceThatCannotBeResolvedIsAnsweredEmpty) {
  strict::Core().Strict_SetAnswer("GetProtocol", "0");
  host.Finish(QM_CALLBACK_FROM_REFERENCE, "Gone:1");
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", R"(39(""))"));
}

}  // namespace
}  // namespace quillmar::contract
