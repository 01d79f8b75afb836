// Objects without geometry of their own: calculations and assemblies by all that CADs offer for
// them, and groups.
#include <algorithm>

#include "Calculation.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

using Lines = std::vector<std::string>;

LoginArguments WithCad(const char* name) {
  LoginArguments arguments;
  arguments.cadModuleName = name;
  return arguments;
}

LoginArguments WithExtension(const char* extension) {
  LoginArguments arguments;
  arguments.modelExt = extension;
  return arguments;
}

// What a CAD gets for one kind. Words in brackets stand for what the protocol gives.
struct Variant {
  const char* addIn;
  const char* typeOfPart;
  int code;
  const char* function;
  std::size_t connection;
  Lines arguments;
};

void PrintTo(const Variant& variant, std::ostream* out) {
  *out << variant.addIn << " " << variant.function;
}

const Variant kVariants[] = {
    {"Strictcad.dll",
     kCalculationObject,
     QM_CALLBACK_NEW_PART,
     "InsertCalculationEx2",
     1,
     {"[id]", "[id]", "[list]", "Title", ""}},
    {"Strictcad.dll",
     kCalculationObject,
     QM_CALLBACK_RECALCULATED,
     "ChangeCalculationEx2",
     1,
     {"[id]", "[id]", "[list]", "Title"}},
    {"Strictcad.dll",
     kAssembly,
     QM_CALLBACK_NEW_PART,
     "InsertAssembly",
     2,
     {"[id]", "[list]", "[id]"}},
    {"Strictcad.dll",
     kAssembly,
     QM_CALLBACK_RECALCULATED,
     "ChangeAssemblyEx",
     2,
     {"[id]", "[list]", "[id]", "2", "[pairs]"}},
    {"Older.dll",
     kCalculationObject,
     QM_CALLBACK_NEW_PART,
     "InsertCalculationEx",
     1,
     {"[id]", "[id]", "Title", "[file]"}},
    // The parameters go where the insert function takes them.
    {"Older.dll",
     kCalculationObject,
     QM_CALLBACK_RECALCULATED,
     "ChangeCalculation",
     1,
     {"[id]", "[id]", "Title"}},
    {"Older.dll",
     kAssembly,
     QM_CALLBACK_RECALCULATED,
     "ChangeAssembly",
     2,
     {"[id]", "[list]", "[id]"}},
    {"Plain.dll",
     kCalculationObject,
     QM_CALLBACK_NEW_PART,
     "InsertCalculation",
     1,
     {"[id]", "[id]", "Title"}},
    {"Plain.dll",
     kCalculationObject,
     QM_CALLBACK_RECALCULATED,
     "ChangeCalculation",
     1,
     {"[id]", "[id]", "Title"}},
};

class Variants : public Calculation, public testing::WithParamInterface<Variant> {
 protected:
  Variants() : Calculation(WithCad(GetParam().addIn)) {
    Record record;
    Fill(record, GetParam().typeOfPart);
    record.SetKeyWord("Globals", "Caption", "Title");
    id = record.Id();
  }

  Lines Expected() {
    Lines lines = GetParam().arguments;
    for (std::string& line : lines) {
      if (line == "[id]") line = id;
      if (line == "[list]") line = ParameterList(Record(id));
      if (line == "[file]") line = SharedFile();
      if (line == "[pairs]") line = Pairs();
    }
    return lines;
  }

  std::string id;
};

TEST_P(Variants, HandOver) {
  const Lines expected = Expected();
  host.Finish(GetParam().code, id);
  EXPECT_EQ(OnlyCall(GetParam().function, GetParam().connection), expected);
  EXPECT_THAT(host.Commands(), ElementsAre("3()", "7()"));
}

TEST_P(Variants, ACadThatRefusesSendsTheUserBack) {
  strict::Core().Strict_SetAnswer(GetParam().function, "0");
  host.Finish(GetParam().code, id);
  EXPECT_EQ(host.Commands().back(), "2(\"" + id + "\")");
}

TEST_P(Variants, TheChangeStateDecidesWhatTheCadIsTold) {
  { Record(id).SetGlobal("Changed", "1"); }
  host.Finish(QM_CALLBACK_RECALCULATED, id);
  EXPECT_THAT(OnlyCall("ConnectProtocol", 1), ElementsAre(id, id));
  { Record(id).SetGlobal("Changed", "7"); }
  ForgetCalls();
  host.Finish(QM_CALLBACK_RECALCULATED, id);
  EXPECT_THAT(Steps(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, Variants, testing::ValuesIn(kVariants));

// --- groups ---

class Groups : public Calculation {
 protected:
  explicit Groups(const LoginArguments& arguments = {}) : Calculation(arguments) {
    Record record;
    record.SetKeyWord("Main", "DataFile", "KeelData|XtalVek").SetGlobal("TypeOfPart", "11");
    Name(record.Id(), "group");
    group = record.Id();
  }

  // Behind the members that the group has.
  static void PutMembers(const std::string& id, const Lines& members) {
    Record record(id);
    std::string order = record.KeyWord("SuperProtocolOrder", "Order");
    if (order == kMissing) order.clear();
    for (const std::string& member : members) {
      record.SetMember(member);
      order += (order.empty() ? "" : ";") + member;
    }
    record.SetKeyWord("SuperProtocolOrder", "Order", order);
  }

  // A member of the group; `drawn` stands in the CAD as it is.
  std::string Add(const std::string& name, const char* typeOfPart, bool drawn = false) {
    std::string id;
    {
      Record record;
      Fill(record, typeOfPart);
      record.SetVersion(2, 0);
      if (drawn) record.SetKeyWord("Cadx", "FromCad", "1").SetGlobal("OldModelId", "Shaft_1");
      id = record.Id();
    }
    Name(id, name);
    PutMembers(group, {id});
    return id;
  }

  void Finish(int code = QM_CALLBACK_NEW_PART) {
    ForgetCalls();
    host.Forget();
    host.Finish(code, group);
  }

  std::string group;
};

TEST_F(Groups, MembersAreDrawnOneAfterTheOtherThenTheGroup) {
  const std::string assembly = Add("assembly", kAssembly);
  { Record(assembly).SetParameter("VXP_FS_Nut", "0", ""); }
  const std::string part = Add("part", kParametricPart);
  const std::string shaft = Add("shaft", kShaft, true);
  const std::string otherModel = Add("other", kShaft, true);
  { Record(otherModel).SetGlobal("OldModelId", "SHAFT_1"); }
  const std::string kindless = Add("kindless", "11");
  const std::string kept = Add("kept", kShaft);
  { Record(kept).SetKeyWord("Cadx", "DoNotErase", "1"); }
  { Record(group).SetKeyWord("SPProp", "Name", "Gearbox"); }
  Finish();
  EXPECT_THAT(Steps(), ElementsAre("GroupInsertStart", "SetPartsVisibility assembly",
                                   "InsertAssembly assembly @assembly",
                                   "InsertParamPart part @part", "ChangeShaft shaft @shaft",
                                   "InsertShaft other @other", "InsertShaft kept @kept",
                                   "InsertNamedProtocol group @group", "GroupInsertEnd"));
  EXPECT_EQ(Calls("SetPartsVisibility")[0].arguments[1], "Nut,0");
  EXPECT_EQ(Calls("InsertNamedProtocol")[0].arguments[1], "Gearbox");
  EXPECT_THAT(HostSteps(), ElementsAre("3()", "7()", R"(34("assembly"))", R"(34("part"))",
                                       R"(34("shaft"))", R"(34("other"))", R"(34("kept"))"));
  for (const std::string& id : {assembly, part, shaft, otherModel}) EXPECT_EQ(StateOf(id), 0);
  EXPECT_EQ(StateOf(kindless), 2) << "it was passed by";
  ASSERT_EQ(StateOf(kept), 2);
  EXPECT_EQ(Record(kept).KeyWord("Cadx", "FromCad"), "1");
}

TEST_F(Groups, AMemberOfTheOldLayoutIsConvertedBeforeTheCadHasIt) {
  const std::string gear = Add("gear", kParametricPart);
  {
    Record record(gear);
    record.SetKeyWord("Main", "DataFile", "KeelData|GEAR2").SetParameter("cas", "0.25", "mm");
    record.SetVersion(1, 0);
  }
  Finish();
  EXPECT_THAT(Calls("InsertParamPart").at(0).arguments, testing::Contains(HasSubstr("cs,0.25")));
}

TEST_F(Groups, AFailedMemberDoesNotStopTheGroup) {
  const std::string part = Add("part", kParametricPart);
  const std::string kept = Add("kept", kParametricPart);
  { Record(kept).SetKeyWord("Cadx", "DoNotErase", "1"); }
  Add("shaft", kShaft);
  strict::Core().Strict_SetAnswer("InsertParamPart", "0");
  Finish();
  EXPECT_THAT(Steps(), ElementsAre("GroupInsertStart", "InsertParamPart part @part",
                                   "InsertParamPart kept @kept", "InsertShaft shaft @shaft",
                                   "GroupInsertEnd"));
  EXPECT_EQ(Record(kept).KeyWord("Cadx", "FromCad"), kMissing);
  EXPECT_EQ(StateOf(part), 0);
  EXPECT_THAT(host.Commands().back(), HasSubstr("34(")) << "the group itself succeeded";
}

TEST_F(Groups, AGroupThatStandsInTheCadIsChanged) {
  Add("shaft", kShaft);
  { Record(group).SetKeyWord("SPProp", "Name", "Gearbox").SetKeyWord("Cadx", "FromCad", "1"); }
  Finish(QM_CALLBACK_RECALCULATED);
  EXPECT_THAT(Steps(), ElementsAre("GroupInsertStart", "InsertShaft shaft @shaft",
                                   "ChangeNamedProtocol group @group", "GroupInsertEnd"));
}

TEST_F(Groups, UpdatingAllOnlyReconnects) {
  Add("shaft", kShaft);
  { Record(group).SetKeyWord("Hexaplan", "UpdateAll", "1"); }
  Finish();
  EXPECT_THAT(Steps(), ElementsAre("ConnectProtocol group @group"));
}

TEST_F(Groups, BoltedJointsGoToTheirLibraryUntilTheyStandInTheCad) {
  for (const char* dataFile : {"KeelData|THRJOIN", "THRJOIN"}) {
    const std::string joint = Add("joint", kShaft);
    { Record(joint).SetKeyWord("Main", "DataFile", dataFile).SetKeyWord("MCWParts", "Bolt", ""); }
    const std::string drawn = Add("drawn", kShaft);
    { Record(drawn).SetKeyWord("Main", "DataFile", dataFile).SetKeyWord("MCWParts", "Bolt", "B"); }
    Finish();
    const Lines inserted =
        kStrictCompanions ? Lines{"GroupInsertStart", "InsertBoltedConnection joint",
                                  "InsertShaft drawn @drawn", "GroupInsertEnd"}
                          : Lines{"GroupInsertStart", "InsertShaft drawn @drawn", "GroupInsertEnd"};
    EXPECT_EQ(Steps(), inserted);
    EXPECT_EQ(StateOf(joint), 2) << "its library does the rest";
    Erase(joint);
  }
}

TEST_F(Groups, ALoopReadsAllMembersBack) {
  const std::string shaft = Add("shaft", kShaft);
  { Record(group).SetKeyWord("Cadx", "Loop", "1"); }
  Finish();
  // First the member's own loop, then the group's.
  const Lines readBack = {"GetParameterListEx shaft", "GetFeaturesState shaft",
                          "GetReferenceDims shaft", "GetPhysicalPropertiesEx shaft"};
  Lines expected = {"GroupInsertStart", "InsertShaft shaft @shaft"};
  expected.insert(expected.end(), readBack.begin(), readBack.end());
  expected.push_back("GroupInsertEnd");
  expected.insert(expected.end(), readBack.begin(), readBack.end());
  EXPECT_EQ(Steps(), expected);
  ASSERT_EQ(StateOf(shaft), 2) << "a loop erases nothing";
  const Record record(shaft);
  EXPECT_EQ(record.KeyWord("Cadx", "FromCad"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "Optim"), "0");
  EXPECT_EQ(record.KeyWord("Cadx", "Loop"), "0");
}

TEST_F(Groups, GroupsThatLeadBackToThemselvesEnd) {
  std::string inner;
  {
    Record record;
    record.SetKeyWord("Main", "DataFile", "xtalvek");
    inner = record.Id();
    Name(inner, "inner");
  }
  PutMembers(inner, {group, inner, "GONE"});
  PutMembers(group, {inner});
  Add("shaft", kShaft);
  Finish();
  EXPECT_THAT(Steps(), ElementsAre("GroupInsertStart", "GroupInsertStart", "GroupInsertEnd",
                                   "InsertShaft shaft @shaft", "GroupInsertEnd"));
  EXPECT_EQ(StateOf("GONE"), 0) << "what is gone is not made anew";
}

class GroupsOfOlderCad : public Groups {
 protected:
  GroupsOfOlderCad() : Groups(WithCad("Older.dll")) {}
};

TEST_F(GroupsOfOlderCad, NamedProtocolsNeedBothFunctions) {
  { Record(group).SetKeyWord("SPProp", "Name", "Gearbox"); }
  Finish();
  EXPECT_THAT(Steps(), ElementsAre("GroupInsertStart", "GroupInsertEnd"));
}

// --- groups that end with their last member ---

struct EarlyEnd {
  const char* extension;
  const char* typeOfPart;
  bool drawn;
  bool ends;
};

void PrintTo(const EarlyEnd& row, std::ostream* out) {
  *out << row.extension << " " << row.typeOfPart << (row.drawn ? " drawn" : "");
}

constexpr EarlyEnd kEarlyEnds[] = {
    {"kpz", "2", false, true}, {"kpz", "7", false, true},   {"kpz", "8", false, true},
    {"kpz", "9", false, true}, {"kpz", "14", false, false}, {"kpz", "2", true, false},
    {"par", "7", false, true}, {"par", "8", false, true},   {"par", "2", false, false},
    {"par", "7", true, false}, {"prt", "7", false, false},
};

class EarlyEnds : public Groups, public testing::WithParamInterface<EarlyEnd> {
 protected:
  EarlyEnds() : Groups(WithExtension(GetParam().extension)) {}
};

TEST_P(EarlyEnds, LeaveTheGroupOpen) {
  Add("first", kShaft);
  const std::string last = Add("last", GetParam().typeOfPart, GetParam().drawn);
  { Record(group).SetKeyWord("SPProp", "Name", "Gearbox"); }
  Finish();
  EXPECT_THAT(Calls("GroupInsertEnd"), SizeIs(GetParam().ends ? 0 : 1));
  EXPECT_THAT(Calls("InsertNamedProtocol"), SizeIs(GetParam().ends ? 0 : 1));
  EXPECT_EQ(StateOf(last), 0) << "the member itself is done with";
  EXPECT_EQ(host.Commands().back(), "34(\"" + last + "\")") << "and that is a success";
}

INSTANTIATE_TEST_SUITE_P(All, EarlyEnds, testing::ValuesIn(kEarlyEnds));

}  // namespace
}  // namespace quillmar::contract
