// The order of all calls of an insert. The tables are worked out from the procedure, step by step.
#include "PartsWorld.h"

namespace quillmar::test {
namespace {

using Lines = std::vector<std::string>;

void Append(Lines& lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
}

Lines Joined(std::initializer_list<Lines> pieces) {
  Lines lines;
  for (const Lines& piece : pieces) Append(lines, piece);
  return lines;
}

Lines For(const std::string& protocol, const Lines& calls) {
  Lines lines;
  for (const std::string& call : calls) lines.push_back(protocol + " " + call);
  return lines;
}

// Whether the part is local, and its caption.
const Lines kDescribe = {"GetKeyWord Cadx|ReallySmartPart", "PutKeyWord Cadx|ReallySmartPart|0",
                         "GetKeyWord Object|CadDescription",
                         "GetKeyWord Grupova|UseUserDescription",
                         "GetKeyWord Object|CadDescription"};
const Lines kFindKind = {"GetKeyWord Main|DataFile", "GetGlobalData TypeOfPart"};
const Lines kWantsDescription = {"GetKeyWord Main|DataFile"};
const Lines kMass = {"GetDataParam mass", "PutGlobalData BOM5|2.5", "PutGlobalData BOM6|kg"};
const Lines kLoopOff = {"GetKeyWord Cadx|Loop", "PutKeyWord Cadx|Loop|0"};
const Lines kOptimOff = {"PutKeyWord Cadx|Optim|0"};
const Lines kReference = {"GetBuffer", "GetKeyWord Object|ProtID"};
const Lines kParameters = {"GetDataCount", "GetDataItem 1", "GetDataItem 2", "GetViewKey"};
const Lines kModelPath = {"GetModelID", "GetGlobalData Path"};
const Lines kGenerationRules = {"GetGlobalData GenPartType", "GetGlobalData GenCopyFile"};
const Lines kFileName = {"GetGlobalData GenCopyFile", "GetKeyWord Main|DataFile"};
const Lines kFinish = {"GetKeyWord Cadx|Optim", "PutKeyWord Cadx|Optim|0"};
const Lines kNoViews = {"GetKeyWord McwViews|View1"};
const Lines kErasePartName = {"PutKeyWord Cadx|PartName|(null)"};

Lines Begin(const std::string& name) {
  return For(name, Joined({kFindKind, kDescribe, kWantsDescription, kDescribe}));
}

Lines TakeOver(const std::string& name, const std::string& model, const Lines& count) {
  return For(name,
             Joined({{"GetKeyWord Cadx|FromCad", "GetModelID", "PutGlobalData OldModelId|" + model},
                     kLoopOff,
                     kOptimOff,
                     count,
                     kMass}));
}

const Lines kCounted = {"PutGlobalData BOM7|1"};
const Lines kNotCounted = {"PutKeyWord Cadx|NewView|1", "PutGlobalData BOM7|0"};

Lines ParamPart(const std::string& name, const std::string& model, const std::string& viewKey) {
  Lines lines = For(name, Joined({kParameters, kModelPath, kGenerationRules, kFileName}));
  lines.push_back("cad InsertParamPart " + name + "|SUITE\\models\\" + model + ".prt|*view*," +
                  viewKey + ",d,10,mass,2.5|" + name + "<@PID>|0|<ASM>\\spring.prt|Spring|0");
  return lines;
}

class InsertTest : public PartsWorld {
 protected:
  InsertTest() {
    SetOption("OptGeneral2", "SharedFileName", std::string("spring"));
    SetOption("OptGeneral2", "SharedFolderType", 1u);
    folder = SuiteFolder() + "\\";
    main = MakeProtocol("main", {{"Main", "DataFile", "KEELDATA|SPRING"},
                                 {"Globals", "TypeOfPart", "2"},
                                 {"Globals", "Path", folder.c_str()},
                                 {"Cadx", "ReallySmartPart", "0"},
                                 {"Object", "CadDescription", "Spring"},
                                 {"Data", "d", "10", "mm"},
                                 {"Data", "mass", "2.5", "kg"},
                                 {"Model", "", "SP1"}});
  }

  std::string folder;
  std::string main;
};

TEST_F(InsertTest, PlainPart) {
  EXPECT_TRUE(Insert(main));
  EXPECT_EQ(Calls(), Joined({Begin("main"),
                             TakeOver("main", "SP1", kCounted),
                             For("main", kNoViews),
                             For("main", kReference),
                             ParamPart("main", "SP1", ""),
                             For("main", kFinish),
                             {"main CloseProtocol"}}));
  EXPECT_EQ(TakeReports(), Lines());
}

TEST_F(InsertTest, ChildOfItsParent) {
  const std::string parent = MakeProtocol(
      "parent", {{"Main", "DataFile", "KEELDATA|ROD"}, {"Globals", "TypeOfPart", "11"}});
  {
    VXProtocol protocol(protocols, main);
    protocol.SetLinkFrom("NewView", parent + "@NewView");
  }
  EXPECT_TRUE(Insert(main, InsertMode::Child));
  EXPECT_EQ(Calls(), Joined({Begin("main"),
                             TakeOver("main", "SP1", kNotCounted),
                             For("main", kErasePartName),
                             {"main GetParentsList", "parent OpenProtocol"},
                             For("parent", kFindKind),
                             For("parent", kReference),
                             {"cad ConnectProtocol parent|parent<@PID>", "parent CloseProtocol"},
                             For("main", kReference),
                             ParamPart("main", "SP1", ""),
                             For("main", kFinish),
                             {"main CloseProtocol"}}));
}

TEST_F(InsertTest, PastedFromTheClipboard) {
  const std::string source = MakeProtocol(
      "source", {{"Main", "DataFile", "KEELDATA|SPRING"}, {"Globals", "TypeOfPart", "11"}});
  {
    VXProtocol clipboard(protocols);
    clipboard.OpenClipboard();
    clipboard.PutKeyWord("Object", "ProtID", source);
  }
  EXPECT_TRUE(Insert(main, InsertMode::Clipboard));
  EXPECT_EQ(
      Calls(),
      Joined({Begin("main"),
              TakeOver("main", "SP1", kCounted),
              For("main", kErasePartName),
              {"KEELCLIP OpenProtocol", "KEELCLIP GetKeyWord Object|ProtID", "source OpenProtocol"},
              For("source", kFindKind),
              For("source", kReference),
              {"cad ConnectProtocol source|source<@PID>", "source CloseProtocol",
               "KEELCLIP CloseProtocol"},
              For("main", kNoViews),
              For("main", kReference),
              ParamPart("main", "SP1", ""),
              For("main", kFinish),
              {"main CloseProtocol"}}));
}

// Two views; the first one's model is named in the model table, the second's key is its model.
TEST_F(InsertTest, CalculationWithViews) {
  WriteSuiteFile("models.ini", "[Models]\r\nfront=FRONT7\r\n");
  Put(main, {{"McwViews", "View1", "Front,front"},
             {"McwViews", "View2", "Side,SIDE8"},
             {"Calc", "CalcName", "Springs"},
             {"Globals", "Unit", "mm"}});
  Offer(driver, "McStart");
  Offer(driver, "McEnd");

  const auto makeView = [](const std::string& view, const std::string& number,
                           const std::string& key, const std::string& model) {
    return Lines{"main GetKeyWord McwViews|View" + number,
                 view + " OpenNew",
                 view + " OpenProtocol",
                 view + " PutBuffer",
                 view + " SetLinkFrom NewView|main@NewView",
                 "main SetLinkTo NewView|" + view,
                 "main PutKeyWord McwProtOrder|View" + number + "|" + view,
                 view + " PutViewKey " + key,
                 view + " PutModelID " + model,
                 view + " CloseProtocol",
                 "host",
                 view + " OpenProtocol"};
  };
  const auto insertView = [](const std::string& view, const std::string& key,
                             const std::string& model) {
    return Joined({Begin(view), TakeOver(view, model, kNotCounted), For(view, kErasePartName),
                   For(view, kReference), ParamPart(view, model, key), For(view, kFinish)});
  };
  EXPECT_TRUE(Insert(main));
  EXPECT_EQ(Calls(), Joined({Begin("main"),
                             TakeOver("main", "SP1", kCounted),
                             For("main", kNoViews),
                             {"main GetBuffer", "main GetKeyWord Globals|Path"},
                             makeView("new1", "1", "Front", "FRONT7"),
                             makeView("new2", "2", "Side", "SIDE8"),
                             {"main GetKeyWord McwViews|View3"},
                             For("main", kReference),
                             {"main GetKeyWord Calc|CalcName", "main GetGlobalData Unit"},
                             For("main", kParameters),
                             {"cad McStart 0|Springs|mm|main|*view*,,d,10,mass,2.5"},
                             ParamPart("main", "SP1", ""),
                             insertView("new1", "Front", "FRONT7"),
                             insertView("new2", "Side", "SIDE8"),
                             {"cad McEnd ", "new1 CloseProtocol", "new2 CloseProtocol"},
                             For("main", kFinish),
                             {"main CloseProtocol"}}));
}

TEST_F(InsertTest, FailuresOfTheCadWithViews) {
  Put(main, {{"McwViews", "View1", "Front,A"}, {"McwViews", "View2", "Side,B"}});
  Offer(driver, "McStart");
  Offer(driver, "McEnd");
  FakeCad::Get().refuses = {"McStart"};
  EXPECT_FALSE(Insert(main));
  EXPECT_EQ(Journal::Get().LinesOf("cad InsertParamPart"), Lines());

  // The main object failed: no view and no end, and the insert goes on as if it had not.
  FakeCad::Get().refuses = {"InsertParamPart"};
  EXPECT_TRUE(Insert(main));
  EXPECT_EQ(CadCalls().size(), 2u);
  EXPECT_EQ(TakeReports(), Lines{"VXParamPart.cpp: Cannot insert parameter part"});
}

TEST_F(InsertTest, AtMostNinetyNineViews) {
  for (int i = 1; i <= 120; ++i) {
    Put(main, {{"McwViews", ("View" + std::to_string(i)).c_str(), "V,M"}});
  }
  EXPECT_TRUE(Insert(main));
  EXPECT_EQ(Journal::Get().LinesOf("cad InsertParamPart").size(), 100u);
}

TEST_F(InsertTest, ViewWithoutAKindStopsTheViews) {
  Put(main, {{"McwViews", "View1", "Front,A"}, {"McwViews", "View2", "Side,B"}});
  Offer(driver, "McEnd");
  // The main protocol is a kind with a part only as long as its object is inserted.
  EXPECT_TRUE(WithPart(main, [&](VXPart& part) {
    Put(main, {{"Globals", "TypeOfPart", "11"}});
    return part.Insert(InsertMode::Plain);
  }));
  EXPECT_EQ(TakeReports(), Lines{"VXPart.cpp: Cannot create part file."});
  EXPECT_EQ(Journal::Get().LinesOf("cad McEnd").size(), 1u);
}

TEST_F(InsertTest, LoopReadsBackAndAnswersNo) {
  Put(main, {{"Cadx", "Loop", "1"}});
  FakeCad::Get().texts["GetParameterList"] = "d,12";
  EXPECT_FALSE(Insert(main));
  EXPECT_EQ(TakeReports(), Lines());
  EXPECT_EQ(GetParam(main, "d"), "12 mm");
  EXPECT_EQ(Get(main, "Cadx", "Loop"), "0");
  EXPECT_EQ(Get(main, "Cadx", "Optim"), "1");

  // A state of 4 is set by the loop itself while the part is being inserted.
  Put(main, {{"Cadx", "Loop", "1"}});
  session.groupManager = true;
  Put(main, {{"Cadx", "Optim", "4"}});
  FakeCad::Get().refuses = {"GetParameterList"};
  EXPECT_FALSE(Insert(main));
  EXPECT_EQ(Get(main, "Cadx", "Optim"), "4");
  EXPECT_EQ(TakeReports(), (Lines{"CadListReaders.cpp: Cannot get list of parameters from CAD",
                                  "VXPart.cpp: Cannot get extended information"}));
}

TEST_F(InsertTest, FailsWithItsMessage) {
  FakeCad::Get().refuses = {"InsertParamPart"};
  EXPECT_FALSE(Insert(main));
  EXPECT_EQ(TakeReports(), (Lines{"VXParamPart.cpp: Cannot insert parameter part",
                                  "VXPart.cpp: Cannot insert part into cad system."}));

  FakeCad::Get().refuses = {"ConnectProtocol"};
  EXPECT_FALSE(Insert(main, InsertMode::Clipboard));
  EXPECT_FALSE(Insert(main, InsertMode::Child)) << "no parent";
  EXPECT_EQ(TakeReports(), Lines());

  VXProtocol protocol(protocols, main);
  VXPart bare(services, protocol);
  TakeReports();
  EXPECT_FALSE(bare.Insert(InsertMode::Plain));
  EXPECT_EQ(TakeReports(), Lines{"VXPart.cpp: Cannot create part file."});
}

}  // namespace
}  // namespace quillmar::test
