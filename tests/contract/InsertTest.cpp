// A finished calculation becomes a CAD object: callback code 150.
#include "Calculation.h"
#include "platform/Files.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

class Insert : public Calculation {
 protected:
  std::string List(const std::string& id) { return ParameterList(Record(id)); }
  void Finished(const std::string& id) { host.Finish(QM_CALLBACK_NEW_PART, id); }
};

TEST_F(Insert, AParametricPartWithAllItsArguments) {
  const std::string id = Calculated(kParametricPart);
  const std::string list = List(id);
  Finished(id);
  EXPECT_THAT(OnlyCall("InsertParamPart", 3),
              ElementsAre(id, ModelPath(), list, id, "0", SharedFile(), Caption(), "2", Pairs()));
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()"));
}

TEST_F(Insert, AShaftWithAllItsArguments) {
  const std::string id = Calculated(kShaft);
  const std::string list = List(id);
  Finished(id);
  EXPECT_THAT(OnlyCall("InsertShaft", 3),
              ElementsAre(id, ModelPath(), list, id, SharedFile(), Caption(), "2", Pairs()));
  EXPECT_THAT(Calls("InsertParamPart"), IsEmpty());
}

// As many points as a protocol has room for: two parameters each. The strict companions give each
// text pages of its own, of which there are not so many.
TEST_F(Insert, ACamWithAllItsPoints) {
  const int points = kStrictCompanions ? 1000 : 15000;
  std::string id;
  {
    Record record;
    Fill(record, "14");
    record.SetParameter("cPoint", std::to_string(points), "ND").SetParameter("bv", "40", "mm");
    for (int i = 1; i <= points; ++i) {
      const std::string number = "_" + std::to_string(i);
      record.SetParameter(("l" + number).c_str(), std::to_string(40 + i), "mm")
          .SetParameter(("a" + number).c_str(), std::to_string(i), "deg");
    }
    id = record.Id();
  }
  const std::string list = List(id);
  Finished(id);
  EXPECT_THAT(OnlyCall("InsertCamPartEx", 2),
              ElementsAre(id, list, id, SharedFile(), ModelPath(), Caption(), "2", Pairs()));
  EXPECT_THAT(list, HasSubstr("_" + std::to_string(points) + "," + std::to_string(points + 40)));
}

TEST_F(Insert, LeavesTheStateOfTheObjectInTheProtocol) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Cadx", "Optim", "3"); }
  Finished(id);
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.Global("OldModelId"), "Shaft_1");
  EXPECT_EQ(record.Global("BOM5"), "2.5");
  EXPECT_EQ(record.Global("BOM6"), "kg");
  EXPECT_EQ(record.Global("BOM7"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "Loop"), "0");
  EXPECT_EQ(record.KeyWord("Cadx", "Optim"), "0");
  EXPECT_EQ(record.KeyWord("Cadx", "ReallySmartPart"), "0");
}

TEST_F(Insert, ALocalPartGetsAFileOfItsOwn) {
  std::string id;
  {
    Record record;
    Fill(record, kParametricPart);
    record.SetKeyWord("Cadx", "ReallySmartPart", "1");
    id = record.Id();
  }
  Finished(id);
  const std::vector<std::string> call = OnlyCall("InsertParamPart", 3);
  ASSERT_THAT(call, SizeIs(9));
  EXPECT_EQ(call[4], "1");
  ASSERT_EQ(call[5].size(), std::string("<ASM>\\SHAFT 12345678.prt").size()) << call[5];
  EXPECT_EQ(call[5].substr(0, 12), "<ASM>\\SHAFT ");
  EXPECT_EQ(call[5].substr(20), ".prt");
  EXPECT_EQ(call[5].substr(12, 8).find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"),
            std::string::npos);
}

TEST_F(Insert, APartWithoutAChoiceIsLocalUnlessSmartPartsAreOn) {
  std::string id;
  {
    Record record;
    Fill(record, kShaft);
    id = record.Id();
    EXPECT_EQ(record.KeyWord("Cadx", "ReallySmartPart"), "0");
  }
  { Record(id).SetKeyWord("Cadx", "SmartPart", "0").EraseKeyWord("Cadx", "ReallySmartPart"); }
  Finished(id);
  EXPECT_EQ(Record(id).KeyWord("Cadx", "ReallySmartPart"), "1");
}

TEST_F(Insert, SharedPartsMayGoWithoutParametersAndWithoutACopy) {
  const std::string id = Calculated(kParametricPart);
  { Record(id).SetGlobal("GenPartType", "0").SetGlobal("GenCopyFile", "0"); }
  Finished(id);
  EXPECT_THAT(OnlyCall("InsertParamPart", 3),
              ElementsAre(id, ModelPath(), "", id, "0", ModelPath(), Caption(), "2", Pairs()));
}

TEST_F(Insert, TheReferenceNamesTheObjectTheProtocolWasMadeFor) {
  const std::string id = Calculated(kShaft);
  { Record(id).SetKeyWord("Object", "ProtID", "OTHER"); }
  Finished(id);
  EXPECT_EQ(OnlyCall("InsertShaft", 3).at(3), "OTHER");
}

TEST_F(Insert, LongValuesArriveWhole) {
  const std::string id = Calculated(kShaft);
  const std::string lengthy(3000, 'v');
  // One character below, at and above the first buffer's limit.
  {
    Record(id)
        .SetParameter("p1022", std::string(1022, 'v'), "")
        .SetParameter("p1023", std::string(1023, 'v'), "")
        .SetParameter("p1024", std::string(1024, 'v'), "")
        .SetParameter("p3000", lengthy, "");
  }
  Finished(id);
  const std::vector<std::string> call = OnlyCall("InsertShaft", 3);
  ASSERT_THAT(call, SizeIs(8));
  for (const std::size_t length : {1022u, 1023u, 1024u, 3000u}) {
    const std::string item = ",p" + std::to_string(length) + "," + std::string(length, 'v');
    const auto at = call[2].find(item);
    ASSERT_NE(at, std::string::npos) << length;
    EXPECT_NE(call[2][at + item.size()], 'v') << length;
  }
}

TEST_F(Insert, AFailureSendsTheUserBackToTheCalculation) {
  const std::string id = Calculated(kParametricPart);
  { Record(id).SetKeyWord("Hexaplan", "FromSymbols", "1"); }
  strict::Core().Strict_SetAnswer("InsertParamPart", "0");
  Finished(id);
  EXPECT_THAT(Calls("InsertParamPart"), SizeIs(1));
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()", "2(\"" + id + "\")"));
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "recalc"), "1");
  EXPECT_EQ(record.KeyWord("Hexaplan", "FromSymbols"), kMissing);
  EXPECT_EQ(record.KeyWord("Cadx", "ReallySmartPart"), kMissing);
}

TEST_F(Insert, ThePartObjectNeedsAKnownKind) {
  for (const char* kind : {"11", "77"}) {
    SCOPED_TRACE(kind);
    const std::string id = Calculated(kind);
    host.Forget();
    ForgetCalls();
    Finished(id);
    EXPECT_THAT(CalledFunctions(),
                testing::Each(testing::AnyOf("GetMainHwnd", "GetMainHwndForActivation",
                                             "McSetForegroundWindow")));
    EXPECT_EQ(host.Commands().back(), "2(\"" + id + "\")");
  }
}

}  // namespace
}  // namespace quillmar::contract
