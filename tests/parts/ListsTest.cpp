// Lists of parameters both ways, the readers, physical properties.
#include "PartsWorld.h"
#include "parts/CadListReaders.h"
#include "parts/ObtainProtocol.h"
#include "parts/ParameterLists.h"
#include "parts/PhysicalProperties.h"

namespace quillmar::test {
namespace {

using Lines = std::vector<std::string>;

class ListsTest : public PartsWorld {
 protected:
  std::string Make(const std::vector<Entry>& entries) {
    std::vector<Entry> all = {{"Globals", "TypeOfPart", "2"}, {"Main", "DataFile", "X"}};
    all.insert(all.end(), entries.begin(), entries.end());
    return MakeProtocol("p", all);
  }

  std::string Build(const std::string& protocolId, ListForm form, const std::string& group) {
    VXProtocol protocol(protocols, protocolId);
    std::string text;
    return BuildParameterList(protocol, form, group, text) ? text : "(none)";
  }

  void Apply(const std::string& protocolId, const std::string& text, const std::string& group = {},
             char separator = ',') {
    VXProtocol protocol(protocols, protocolId);
    ApplyParameterList(protocol, session, text, group, separator);
  }
};

TEST_F(ListsTest, FormsOfTheListThatIsSent) {
  const std::string p = Make({{"Data", "d", "1,5", "mm,x"},
                              {"Data", "VXP_FS_hole", "a,b", ""},
                              {"Data", "VXP_FSX_no", "1", ""},
                              {"Data", "VXP", "2", ""},
                              {"Data", "last", "", "kg"}});
  {
    VXProtocol protocol(protocols, p);
    protocol.PutViewKey("KEY");
  }
  EXPECT_EQ(Build(p, ListForm::Values, ""), "*view*,KEY,d,1<VXCOMMA>5,VXP,2,last,");
  EXPECT_EQ(Build(p, ListForm::Units, ""), "*view*,KEY,d,mm,x,VXP,,last,kg");
  EXPECT_EQ(Build(p, ListForm::Values, "FS"), "hole,a<VXCOMMA>b");
  EXPECT_EQ(Build(p, ListForm::Values, "RD"), "");
  EXPECT_EQ(Build(Make({}), ListForm::Values, ""), "*view*,,");
}

TEST_F(ListsTest, ProtocolThatCannotBeCountedGivesAnEmptyList) {
  VXProtocol erased(protocols, Make({}));
  erased.Erase();
  VXPart part(services, erased);
  TakeReports();
  std::string text = "old";
  EXPECT_TRUE(part.BuildParameterList(text));
  EXPECT_EQ(text, "");
  EXPECT_EQ(TakeReports(), Lines{"VXPart.cpp: There are no data in protocol"});
}

TEST_F(ListsTest, ReceivedPairs) {
  const std::string p = Make({{"Data", "d", "10", "mm"}, {"Data", "t", "text", "u"}});
  Apply(p, "d,10.0,t,text,new,1VXCOMMA2,angle,<VXCOMMA>,flag,*on,half");
  EXPECT_EQ(GetParam(p, "d"), "10.0 mm");
  EXPECT_EQ(GetParam(p, "t"), "text u");
  EXPECT_EQ(GetParam(p, "new"), "1,2 ");
  EXPECT_EQ(GetParam(p, "angle"), ", ");
  EXPECT_EQ(GetParam(p, "flag"), "(none)");
  EXPECT_EQ(GetParam(p, "half"), "(none)");
  EXPECT_EQ(Get(p, "Cadx", "flag"), "on");
  EXPECT_EQ(Get(p, "Cadx", "CADVars"), "new,angle");
  EXPECT_EQ(Get(p, "Globals", "DataChanged"), "") << "no value differs as a number or a text";

  // What the CAD added last time and does not name again is gone.
  Apply(p, "angle,3,d,11,");
  EXPECT_EQ(GetParam(p, "new"), "(none)");
  EXPECT_EQ(GetParam(p, "angle"), "3 ");
  EXPECT_EQ(Get(p, "Cadx", "CADVars"), "angle");
  EXPECT_EQ(Get(p, "Globals", "DataChanged"), "1");
}

TEST_F(ListsTest, ReceivedGroupKeepsTheListOfAddedNames) {
  const std::string p = Make({{"Cadx", "CADVars", "keep"}, {"Data", "keep", "1", ""}});
  Apply(p, "hole,0", "FS");
  EXPECT_EQ(GetParam(p, "VXP_FS_hole"), "0 ");
  EXPECT_EQ(GetParam(p, "keep"), "1 ");
  session.groupManager = true;
  Apply(p, "x,0");
  EXPECT_EQ(GetParam(p, "keep"), "1 ");
  EXPECT_EQ(Get(p, "Cadx", "CADVars"), "keep");
}

TEST_F(ListsTest, ReceivedFiveTokens) {
  const std::string p = Make({{"Data", "d", "10", "mm"}});
  Apply(p, "d;11;in;D1/2;note;e;2;;7;;s;*x;u;l;k;f;3", {}, ';');
  EXPECT_EQ(GetParam(p, "d"), "11 in");
  EXPECT_EQ(GetParam(p, "e"), "2 ");
  EXPECT_EQ(GetParam(p, "f"), "3 ");
  EXPECT_EQ(Get(p, "VarDescriptions", "d"), "note");
  EXPECT_EQ(Get(p, "VarDescriptions", "e"), "");
  EXPECT_EQ(Get(p, "Cadx", "s"), "x");
  VXProtocol protocol(protocols, p);
  std::string first;
  std::string second;
  int enabled = 0;
  int level = 0;
  ASSERT_EQ(protocol.GetLinksFromCount(true), 1);
  EXPECT_TRUE(protocol.GetLinkFrom(1, first, second, enabled, level));
  EXPECT_EQ(second, "#D1/2");
}

TEST_F(ListsTest, ReadersTakeTwoSteps) {
  const std::string parameters = "CadListReaders.cpp: Cannot get list of parameters from CAD";
  struct Row {
    CadList list;
    const char* function;
    const char* message;
  };
  const Row rows[] = {
      {CadList::Parameters, "GetParameterList", "Cannot get list of parameters from CAD"},
      {CadList::ParametersEx, "GetParameterListEx", "Cannot get list of parameters from CAD"},
      {CadList::PhysicalPropertiesEx, "GetPhysicalPropertiesEx",
       "Cannot get list of parameters from CAD"},
      {CadList::ShaftParameters, "GetShaftParameterList", "Cannot get list of parameters from CAD"},
      {CadList::FeaturesState, "GetFeaturesState", "Cannot get list of feature states from CAD"},
      {CadList::ReferenceDims, "GetReferenceDims", "Cannot get list of reference dims from CAD"},
      {CadList::PartsVisibility, "GetPartsVisibility", "Cannot get list of parts state from CAD"},
  };
  for (const Row& row : rows) {
    FakeCad& cad = FakeCad::Get();
    std::string text = "old";
    Offer(driver, row.function);
    TakeReports();
    cad.texts[row.function] = std::string(70000, 'x');
    EXPECT_TRUE(ReadCadList(driver, errors, row.list, "k", text)) << row.function;
    EXPECT_EQ(text.size(), 70000u);

    cad.sizes[row.function] = 10;  // and then it is longer than it said
    EXPECT_FALSE(ReadCadList(driver, errors, row.list, "k", text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(TakeReports(), Lines{parameters});

    cad.refuses = {row.function};
    Journal::Get().Reset();
    EXPECT_FALSE(ReadCadList(driver, errors, row.list, "k", text));
    EXPECT_EQ(TakeReports(), Lines{std::string("CadListReaders.cpp: ") + row.message});
    EXPECT_EQ(CadCalls().size(), 1u);
    cad.refuses.clear();
  }
  driver.GetFeaturesState.pointer = nullptr;
  std::string text = "old";
  EXPECT_TRUE(ReadCadList(driver, errors, CadList::FeaturesState, "k", text));
  EXPECT_EQ(text, "");
}

TEST_F(ListsTest, PhysicalPropertiesByEitherRoad) {
  const auto read = [&](const std::string& protocolId) {
    VXProtocol protocol(protocols, protocolId);
    Journal::Get().Reset();
    ReadPhysicalProperties(services, protocol);
  };
  const std::string p = Make({{"Data", "VXP_PP_Volume", "5", "mm3"}});
  Offer(driver, "GetPhysicalProperties");
  double* values = FakeCad::Get().properties;
  for (int i = 0; i < 12; ++i) values[i] = i + 0.5;
  values[3] = -1.0;
  values[6] = -7.0;
  read(p);
  EXPECT_EQ(GetParam(p, "VXP_PP_CenterOfMassX"), "0.5 ND");
  EXPECT_EQ(GetParam(p, "VXP_PP_Volume"), "5 mm3");
  EXPECT_EQ(GetParam(p, "VXP_PP_Area"), "4.5 ND");
  EXPECT_EQ(GetParam(p, "VXP_PP_Mass"), "5.5 ND");
  EXPECT_EQ(GetParam(p, "VXP_PP_MomXX"), "-7 ND");
  EXPECT_EQ(GetParam(p, "VXP_PP_MomYZ"), "11.5 ND");

  Offer(driver, "GetPhysicalPropertiesEx");
  Offer(driver, "GetReferenceDims");
  FakeCad::Get().texts = {{"GetPhysicalPropertiesEx", "Volume,6"}, {"GetReferenceDims", "D1,3"}};
  read(p);
  EXPECT_EQ(GetParam(p, "VXP_PP_Volume"), "6 mm3");
  EXPECT_EQ(GetParam(p, "VXP_RD_D1"), "3 ");
  EXPECT_EQ(CadCalls(), (Lines{"cad GetReferenceDims p", "cad GetPhysicalPropertiesEx p"}));

  for (const auto& [type, asked] : {std::pair{"9", true}, {"4", false}, {"7", false}}) {
    read(Make({{"Globals", "TypeOfPart", type}}));
    EXPECT_EQ(!CadCalls().empty(), asked) << type;
  }
}

TEST_F(ListsTest, ObtainedProtocolIsMarkedAndClosed) {
  const std::string p = Make({{"Model", "", "M1"}, {"Globals", "Changed", "2"}});
  FakeCad::Get().texts["GetProtocol Part 1"] = ReferenceOf(p);
  FakeCad::Get().texts["GetPartsVisibility"] = "cover,0";
  Offer(driver, "GetPartsVisibility");
  EXPECT_TRUE(ObtainProtocol(services, "Part 1"));
  EXPECT_EQ(VXProtocol::ProtocolExists(protocols, p), QM_PROTOCOL_CLOSED);
  EXPECT_EQ(Get(p, "Cadx", "FromCad"), "1");
  EXPECT_EQ(Get(p, "Cadx", "Drawn"), "1");
  EXPECT_EQ(Get(p, "Globals", "Changed"), "0");
  EXPECT_EQ(Get(p, "Globals", "OldModelId"), "M1");
  EXPECT_EQ(GetParam(p, "VXP_FS_cover"), "0 ");

  FakeCad::Get().texts["GetProtocol Part 1"] = "no reference";
  EXPECT_FALSE(ObtainProtocol(services, "Part 1"));
  FakeCad::Get().refuses = {"GetProtocol"};
  EXPECT_FALSE(ObtainProtocol(services, "Part 1"));
}

}  // namespace
}  // namespace quillmar::test
