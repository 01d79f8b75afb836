// The order of all calls of an update, worked out from the procedure, and what it leaves behind.
#include "PartsWorld.h"

namespace quillmar::test {
namespace {

using Lines = std::vector<std::string>;

class UpdateTest : public PartsWorld {
 protected:
  UpdateTest() {
    Offer(driver, "SetFeaturesState");  // not called: no shaft has states
    main = MakeShaft("main");
    Put(main, {{"Data", "VXP_PP_Mass", "7", "ND"}});
  }

  std::string MakeShaft(const std::string& name) {
    return MakeProtocol(name, {{"Main", "DataFile", "KEELDATA|SHAFT"},
                               {"Globals", "TypeOfPart", "9"},
                               {"Globals", "Changed", "0"},
                               {"Cadx", "ReallySmartPart", "0"},
                               {"Object", "CadDescription", "Shaft"},
                               {"Data", "mass", "2.5", "kg"},
                               {"Model", "", "SH1"}});
  }

  // Lets the main protocol lead to a view whose object the CAD has.
  std::string LinkView(const std::string& name) {
    const std::string view = MakeShaft(name);
    VXProtocol protocol(protocols, main);
    protocol.SetLinkTo("newview", view);
    FakeCad::Get().texts["GetProtocol " + view] = ReferenceOf(view);
    return view;
  }

  std::string main;
};

Lines ChangeShaft(const std::string& name, const Lines& items) {
  Lines lines = {name + " GetDataCount"};
  for (std::size_t i = 1; i <= items.size(); ++i) {
    lines.push_back(name + " GetDataItem " + std::to_string(i));
  }
  lines.insert(lines.end(), {name + " GetViewKey", name + " GetGlobalData Changed",
                             name + " GetModelID", name + " GetGlobalData Path",
                             "cad ChangeShaft " + name + "|\\models\\SH1.prt|*view*,,mass,2.5|" +
                                 name + "<@PID>|Shaft|0",
                             name + " GetDataCount"});
  for (std::size_t i = 1; i <= items.size(); ++i) {
    lines.push_back(name + " GetDataItem " + std::to_string(i));
  }
  return lines;
}

// The factory's part and the update up to its own extended data.
Lines BeginUpdate(const std::string& name) {
  Lines lines;
  for (const char* call :
       {"GetKeyWord Main|DataFile", "GetGlobalData TypeOfPart", "GetKeyWord Cadx|ReallySmartPart",
        "PutKeyWord Cadx|ReallySmartPart|0", "GetKeyWord Object|CadDescription",
        "GetKeyWord Grupova|UseUserDescription", "GetKeyWord Object|CadDescription",
        "GetDataParam mass", "PutGlobalData BOM5|2.5", "PutGlobalData BOM6|kg",
        "GetKeyWord Cadx|Loop", "PutKeyWord Cadx|Loop|0", "GetKeyWord Cadx|FromCad",
        "PutKeyWord Cadx|Optim|0", "PutKeyWord Cadx|ModelError|0", "GetLinksToCount"}) {
    lines.push_back(name + " " + call);
  }
  return lines;
}

Lines Reference(const std::string& name) {
  return {name + " GetBuffer", name + " GetKeyWord Object|ProtID"};
}

Lines Finish(const std::string& name) {
  return {name + " GetKeyWord Cadx|Optim", name + " PutKeyWord Cadx|Optim|0"};
}

// The view's protocol is made anew from what the CAD's object carries.
Lines Obtain(const std::string& view) {
  return {"cad GetProtocol " + view,
          view + " IsProtocolExists",
          view + " OpenProtocol",
          view + " GetGlobalData OwnerHWND",
          view + " EraseProtocol",
          view + " OpenProtocol",
          view + " SetVersion 1|0",
          view + " PutBuffer",
          view + " PutKeyWord Cadx|FromCad|1",
          view + " PutKeyWord Cadx|Drawn|1",
          view + " PutGlobalData Changed|0",
          view + " GetModelID",
          view + " PutGlobalData OldModelId|SH1",
          view + " CloseProtocol",
          view + " OpenProtocol"};
}

Lines Joined(std::initializer_list<Lines> pieces) {
  Lines lines;
  for (const Lines& piece : pieces) lines.insert(lines.end(), piece.begin(), piece.end());
  return lines;
}

TEST_F(UpdateTest, PlainPart) {
  EXPECT_TRUE(Update(main));
  EXPECT_EQ(Calls(), Joined({BeginUpdate("main"),
                             Reference("main"),
                             ChangeShaft("main", {"mass", "VXP_PP_Mass"}),
                             Finish("main"),
                             {"main CloseProtocol"}}));
  EXPECT_EQ(TakeReports(), Lines());
}

// The saved order turns the links' order round; the values of the CAD go into each view.
TEST_F(UpdateTest, CalculationWithViews) {
  const std::string front = LinkView("front");
  const std::string side = LinkView("side");
  Put(main, {{"McwProtOrder", "View1", side.c_str()}, {"McwProtOrder", "View2", front.c_str()}});
  Offer(driver, "McEnd");

  const auto announce = [](const std::string& view) {
    return Lines{view + " PutKeyWord Data|VXP_PP_Mass|7", view + " CloseProtocol", "host",
                 view + " OpenProtocol"};
  };
  const auto updateView = [](const std::string& view) {
    return Joined({BeginUpdate(view), Reference(view), ChangeShaft(view, {"mass", "VXP_PP_Mass"}),
                   Finish(view)});
  };
  EXPECT_TRUE(Update(main));
  EXPECT_EQ(
      Calls(),
      Joined({BeginUpdate("main"),
              {"main GetLinkTo 1", "main GetLinkTo 2"},
              Obtain("front"),
              Obtain("side"),
              Reference("main"),
              {"main GetKeyWord McwProtOrder|View1", "main GetKeyWord McwProtOrder|View2",
               "main GetKeyWord McwProtOrder|View3", "main GetKeyList Data",
               "main GetKeyWord Data|VXP_PP_Mass"},
              announce("side"),
              announce("front"),
              {"main GetKeyWord Calc|CalcName", "main GetGlobalData Unit", "main GetDataCount",
               "main GetDataItem 1", "main GetDataItem 2", "main GetViewKey"},
              ChangeShaft("main", {"mass", "VXP_PP_Mass"}),
              updateView("side"),
              updateView("front"),
              {"cad McEnd ", "side CloseProtocol", "front CloseProtocol"},
              Finish("main"),
              {"main CloseProtocol"}}));
}

TEST_F(UpdateTest, ViewsThatTheCadDoesNotHaveAreLeftOut) {
  const std::string front = LinkView("front");
  FakeCad::Get().texts.clear();
  EXPECT_TRUE(Update(main));
  EXPECT_EQ(CadCalls().back().substr(0, 21), "cad ChangeShaft main|");
}

// Damaged links: the view leads back, and the main protocol leads to itself.
TEST_F(UpdateTest, LinksInARingEnd) {
  const std::string front = LinkView("front");
  for (const std::string& from : {front, main}) {
    VXProtocol protocol(protocols, from);
    protocol.SetLinkTo("NewView", main);
  }
  FakeCad::Get().texts["GetProtocol " + front] = ReferenceOf(front);
  FakeCad::Get().texts["GetProtocol " + main] = ReferenceOf(main);
  EXPECT_TRUE(Update(main));
  EXPECT_EQ(Journal::Get().LinesOf("cad ChangeShaft main").size(), 1u);
  EXPECT_EQ(Journal::Get().LinesOf("cad ChangeShaft front").size(), 1u);
}

TEST_F(UpdateTest, FailedChangeStopsOnlyOutsideALoop) {
  FakeCad::Get().refuses = {"ChangeShaft"};
  EXPECT_FALSE(Update(main));
  EXPECT_EQ(Get(main, "Cadx", "ModelError"), "0");

  Put(main, {{"Cadx", "Loop", "1"}});
  EXPECT_TRUE(Update(main));
  EXPECT_EQ(Get(main, "Cadx", "ModelError"), "1");
  EXPECT_EQ(Get(main, "Cadx", "Loop"), "0");
  EXPECT_EQ(Get(main, "Cadx", "Optim"), "1");
  EXPECT_EQ(Get(main, "Cadx", "FromCad"), "1");
}

TEST_F(UpdateTest, GroupManagerLeavesOptimAndDrawsNothingAsFromCad) {
  session.groupManager = true;
  Put(main, {{"Cadx", "Optim", "4"}, {"Globals", "Changed", "1"}});
  EXPECT_TRUE(Update(main));
  EXPECT_EQ(Get(main, "Cadx", "Optim"), "4");
  EXPECT_EQ(CadCalls().size(), 1u) << "the change state is not looked at";
  EXPECT_EQ(CadCalls().front().substr(0, 15), "cad ChangeShaft");
}

}  // namespace
}  // namespace quillmar::test
