// The host's methods over the real storage library: what is in a protocol before and after a
// calculation, and what the CAD side is told.
#include <gmock/gmock.h>

#include <cstring>
#include <fstream>
#include <utility>

#include "TestMachine.h"
#include "hexaplan/host/HostObject.h"
#include "platform/Messages.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "quillmar/CalculationHost.h"

namespace hexaplan {
namespace {

using quillmar::platform::AutomationArguments;
using quillmar::platform::AutomationStatus;
using testing::HasSubstr;
namespace platform = quillmar::platform;

constexpr char kSuite[] = "C:\\Vantorel\\Fendrake";

class CallbackWindow : public platform::WindowHandler {
 public:
  CallbackWindow() : window(platform::HiddenWindow::Create(nullptr, 4000, *this)) {}
  QmWindow Handle() const { return window->Handle(); }
  void OnMessage(unsigned message) override { messages.push_back(message); }
  void OnShown() override {}
  // How often the host has reported since the last question.
  int Reports() {
    platform::PumpMessages();
    const auto wanted = platform::RegisterMessage(QM_MESSAGE_CALLBACK);
    const auto count = std::count(messages.begin(), messages.end(), wanted);
    messages.clear();
    return static_cast<int>(count);
  }

 private:
  std::vector<unsigned> messages;
  std::unique_ptr<platform::HiddenWindow> window;
};

class HostTest : public testing::Test {
 protected:
  HostTest() {
    if (!store.Load(kSuite)) throw std::runtime_error("no storage library");
    Call(QM_HOST_SESSION,
         {2, std::to_string(window.Handle()), std::string("258"), std::string("D")});
  }

  platform::AutomationValue Call(int method, const AutomationArguments& arguments) {
    const auto result = host.Call(method, arguments);
    EXPECT_EQ(result.status, AutomationStatus::Done);
    return result.value;
  }
  int Number(int method, const AutomationArguments& arguments = {}) {
    return std::get<int>(Call(method, arguments));
  }
  std::string CallbackList() { return std::get<std::string>(Call(QM_HOST_CALLBACK_LIST, {})); }
  int Show(const std::string& id) { return Number(QM_HOST_SHOW_CALCULATION, {id}); }

  // A protocol as the start of a calculation leaves it.
  std::string NewProtocol(const std::string& dataFile) {
    auto record = ProtocolRecord::CreateNew(store);
    record->PutGlobal("Standard", "ISO");
    record->PutGlobal("FirstRun", "1");
    record->PutKeyWord("Cadx", "Recalc", "1");
    record->PutKeyWord("Main", "DataFile", "KEELDATA|" + dataFile);
    EXPECT_TRUE(record->Close());
    return record->Id();
  }
  void Put(const std::string& id, const char* section, const char* keyword,
           const std::string& value) {
    ProtocolRecord::Open(store, id)->PutKeyWord(section, keyword, value);
  }
  std::string KeyWord(const std::string& id, const char* section, const char* keyword) {
    return ProtocolRecord::Open(store, id)->KeyWord(section, keyword);
  }
  std::string Global(const std::string& id, const char* item) {
    return ProtocolRecord::Open(store, id)->Global(item);
  }
  // "value unit", "missing" when there is none.
  std::string Parameter(const std::string& id, const std::string& name) {
    for (const DataParameter& each : ProtocolRecord::Open(store, id)->Parameters()) {
      if (each.name == name) return each.value + " " + each.unit;
    }
    return "missing";
  }

  std::string OrderFile(int number) {
    return std::string(kSuite) + "\\Inputs\\" + std::to_string(number) + ".ini";
  }
  void Order(int number, const std::vector<std::pair<std::string, std::string>>& inputs,
             const std::string& dataFile = {}, const std::string& protocol = {}) {
    const std::string file = OrderFile(number);
    platform::WriteProfileText(file, "Calculation", "DataFile", dataFile.c_str());
    platform::WriteProfileText(file, "Calculation", "Protocol", protocol.c_str());
    for (const auto& [name, text] : inputs) {
      platform::WriteProfileText(file, "Inputs", name.c_str(), text.c_str());
    }
  }
  std::string Answer(int number, const char* key) {
    return platform::ReadProfileText(OrderFile(number), "Answer", key, "", 1024);
  }

  TestMachine machine;
  CallbackWindow window;
  ProtocolStore store;
  int ends = 0;
  int deaths = 0;
  HostObject host{kSuite, store, {[this] { ++ends; }, [this] { ++deaths; }}};
};

TEST_F(HostTest, FirstRunWritesThePartAndReportsIt) {
  const std::string id = NewProtocol("GEAR1");
  ProtocolRecord::Open(store, id)->SetVersion(1, 0);
  EXPECT_EQ(Show(id), 1);
  EXPECT_EQ(window.Reports(), 1);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_NEW_PART);
  EXPECT_EQ(CallbackList(), id);

  const struct {
    const char* item;
    const char* value;
  } globals[] = {{"TypeOfPart", "2"},   {"Caption", "Spur gear m2.5 z21 b30"},
                 {"Bom1", "Spur gear"}, {"BOM2", "m2.5 z21 b30"},
                 {"Bom3", "ISO"},       {"Model", "SpurGear"},
                 {"Subtype", "pinion"}, {"Unit", "mm"},
                 {"UnitIsmm", "1"},     {"Path", "C:\\Vantorel\\Models\\"},
                 {"Changed", "0"}};
  for (const auto& each : globals) EXPECT_EQ(Global(id, each.item), each.value) << each.item;
  EXPECT_EQ(KeyWord(id, "Calc", "CalcName"), "Spur gear pair");
  EXPECT_EQ(KeyWord(id, "Material", "Material"), "16MnCr5 case-hardened");
  EXPECT_EQ(KeyWord(id, "Cadx", "Recalc"), "0");
  EXPECT_EQ(Parameter(id, "d"), "52.5 mm");
  EXPECT_EQ(Parameter(id, "da"), "58.5 mm");
  EXPECT_EQ(Parameter(id, "P"), "5.5 kW");
  EXPECT_EQ(Parameter(id, "mass"), "0.43581499 kg");

  auto record = ProtocolRecord::Open(store, id);
  char text[64] = "                                                              ";
  store.Functions().Com_GetModelID(id.c_str(), text);
  EXPECT_STREQ(text, "SpurGear");
  char view[64] = "                                                              ";
  store.Functions().Com_GetViewKey(id.c_str(), view);
  EXPECT_STREQ(view, "MODELA_FM");
  EXPECT_EQ(record->MajorVersion(), 2);
}

// The CAD may be busy: its messages wait, and each must find its own result.
TEST_F(HostTest, EachFinishedCalculationIsReportedByItself) {
  const std::string first = NewProtocol("SHAFT");
  const std::string second = NewProtocol("GEAR1");
  Show(first);
  Show(second);
  EXPECT_EQ(window.Reports(), 2);
  for (const std::string& id : {first, second}) {
    EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_NEW_PART);
    EXPECT_EQ(CallbackList(), id);
    EXPECT_EQ(CallbackList(), id) << "asked again it answers the same";
  }
  Number(QM_HOST_RUN_COMMAND, {first});
  EXPECT_EQ(window.Reports(), 1);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_NEW_PART);
  EXPECT_EQ(CallbackList(), first);
}

TEST_F(HostTest, ShaftIsAShaft) {
  const std::string id = NewProtocol("shaft");
  Show(id);
  EXPECT_EQ(Global(id, "TypeOfPart"), "9");
  EXPECT_EQ(Parameter(id, "d_3"), "40 mm");
  EXPECT_EQ(Global(id, "Caption"), "Shaft D40 L150");
}

// A failed insert makes the module show the calculation again; the host must not answer that with
// the same result for ever.
TEST_F(HostTest, ShownAgainItWaitsForTheUser) {
  const std::string id = NewProtocol("GEAR1");
  Show(id);
  window.Reports();
  EXPECT_EQ(Show(id), 1);
  EXPECT_EQ(window.Reports(), 0);

  // A command of the CAD does not wait.
  EXPECT_EQ(Number(QM_HOST_RUN_COMMAND, {id}), 1);
  EXPECT_EQ(window.Reports(), 1);
}

TEST_F(HostTest, OrderedRecalculationOfADrawnPart) {
  const std::string id = NewProtocol("GEAR1");
  Show(id);
  window.Reports();
  CallbackList();  // until then the first result waits
  for (const char* flag : {"Drawn", "FromCad"}) Put(id, "Cadx", flag, "1");
  Order(1, {{"b", "36"}}, "GEAR1", id);
  Show(id);
  EXPECT_EQ(window.Reports(), 1);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_RECALCULATED);
  EXPECT_EQ(Parameter(id, "b"), "36 mm");
  EXPECT_EQ(Global(id, "Bom2"), "m2.5 z21 b36");
  EXPECT_EQ(Answer(1, "Result"), "Calculated");
  EXPECT_EQ(Answer(1, "Code"), "160");
  EXPECT_EQ(Answer(1, "Protocols"), id);
}

TEST_F(HostTest, OrdersAreTakenOnceByWhatTheyAreFor) {
  const std::string ids[] = {NewProtocol("GEAR1"), NewProtocol("GEAR1"), NewProtocol("GEAR1")};
  Order(1, {{"d_1", "55"}}, "SHAFT");
  Order(2, {{"m", "6"}}, "", ids[1]);
  Order(3, {{"m", "4"}}, "gear1");
  Order(4, {{"m", "5"}});
  for (const std::string& id : ids) Show(id);
  EXPECT_EQ(Parameter(ids[0], "m"), "4 mm");
  EXPECT_EQ(Parameter(ids[1], "m"), "6 mm");
  EXPECT_EQ(Parameter(ids[2], "m"), "5 mm");
  EXPECT_EQ(Answer(1, "Result"), "");
}

TEST_F(HostTest, OnePairGivesTwoPartsThatStayTogether) {
  Order(1, {{"parts", "3"}}, "GEAR1");
  const std::string pinion = NewProtocol("GEAR1");
  Show(pinion);
  EXPECT_EQ(window.Reports(), 1);
  const std::string list = CallbackList();
  ASSERT_THAT(list, testing::StartsWith(pinion + ","));
  const std::string wheel = list.substr(pinion.size() + 1);
  EXPECT_EQ(Global(wheel, "Subtype"), "wheel");
  EXPECT_EQ(Parameter(wheel, "z"), "63 ND");
  EXPECT_EQ(KeyWord(wheel, "Main", "DataFile"), "KEELDATA|GEAR1");
  EXPECT_EQ(Global(wheel, "Standard"), "ISO");

  // A change through either of them reaches both, the one that was shown first.
  Order(2, {{"m", "3"}}, "", wheel);
  Show(wheel);
  EXPECT_EQ(CallbackList(), wheel + "," + pinion);
  EXPECT_EQ(Parameter(pinion, "d"), "63 mm");
  EXPECT_EQ(Parameter(wheel, "d"), "189 mm");

  // One whose other part is gone goes on alone.
  store.Erase(wheel);
  Order(3, {{"m", "2"}}, "", pinion);
  Show(pinion);
  EXPECT_EQ(CallbackList(), pinion);
  EXPECT_FALSE(store.Exists(wheel));
}

// The module makes the view's protocol as a copy that names its main protocol and its view, and
// announces it.
TEST_F(HostTest, ViewsAreCompletedWhenTheyAreAnnounced) {
  Order(1, {{"tw", "2.5"}}, "THRJOIN");
  const std::string bolt = NewProtocol("THRJOIN");
  Show(bolt);
  EXPECT_EQ(CallbackList(), bolt);
  EXPECT_EQ(KeyWord(bolt, "McwViews", "View1"), "nut,NUT");
  EXPECT_EQ(KeyWord(bolt, "McwViews", "View2"), "washer,WASHER");

  const std::string view = NewProtocol("THRJOIN");
  {
    auto record = ProtocolRecord::Open(store, view);
    record->PutKeyWord("McwViews", "View1", "nut,NUT");
    record->PutKeyWord("McwViews", "View2", "washer,WASHER");
    record->PutKeyWord("LinksFrom", "NewView", bolt + "@NewView");
    record->PutModel("Washer", "washer");
    record->PutParameter({"d_2", "12", "mm"});
    // The module holds the main protocol open meanwhile, in this process on the native target.
    auto held = ProtocolRecord::Open(store, bolt);
    record.reset();
    EXPECT_EQ(Number(QM_HOST_ANNOUNCE, {view}), 1);
    EXPECT_EQ(held->KeyWord("McwViews", "View1"), "nut,NUT");
  }
  EXPECT_EQ(Global(view, "Caption"), "Washer 12");
  EXPECT_EQ(Global(view, "Model"), "Washer");
  EXPECT_EQ(Parameter(view, "l_1"), "2.5 mm");
  EXPECT_EQ(Parameter(view, "d_2"), "missing");

  // A user who opens the view changes the whole calculation, and the view with it.
  Order(2, {{"tw", "3"}}, "THRJOIN", bolt);
  EXPECT_EQ(Show(view), 1);
  EXPECT_EQ(CallbackList(), bolt);
  EXPECT_EQ(Parameter(view, "l_1"), "2.5 mm");
  EXPECT_EQ(Number(QM_HOST_ANNOUNCE, {view}), 1);
  EXPECT_EQ(Parameter(view, "l_1"), "3 mm");
  Order(3, {{"tw", "0"}}, "THRJOIN", bolt);
  Show(bolt);
  EXPECT_EQ(KeyWord(bolt, "McwViews", "View2"), "");
}

TEST_F(HostTest, InchCalculationsAreStoredInInches) {
  Order(1, {{"units", "1"}, {"d_1", "2"}}, "SHAFT");
  const std::string shaft = NewProtocol("SHAFT");
  Show(shaft);
  EXPECT_EQ(Global(shaft, "Unit"), "in");
  EXPECT_EQ(Global(shaft, "UnitIsmm"), "0");
  EXPECT_EQ(Parameter(shaft, "d_1"), "2 in");
  EXPECT_EQ(Parameter(shaft, "ro"), "7850 kg/m3");
  Order(2, {{"units", "0"}}, "SHAFT", shaft);
  Show(shaft);
  EXPECT_EQ(Global(shaft, "Unit"), "mm");
  EXPECT_EQ(Parameter(shaft, "d_1"), "50.8 mm");
}

TEST_F(HostTest, ACamCarriesAsManyPointsAsAProtocolHolds) {
  Order(1, {{"cPoint", "15000"}}, "CAM");
  const std::string cam = NewProtocol("CAM");
  Put(cam, "Data", "material", "3");  // as older layouts have it
  Show(cam);
  EXPECT_EQ(Parameter(cam, "material"), "missing");
  EXPECT_EQ(Answer(1, "Result"), "Calculated");
  EXPECT_EQ(Global(cam, "TypeOfPart"), "14");
  EXPECT_EQ(Parameter(cam, "bv"), "40 mm");
  EXPECT_EQ(Parameter(cam, "l_15000"), "40 mm");
  EXPECT_EQ(Parameter(cam, "a_7501"), "180 deg");
  Order(2, {{"cPoint", "12"}}, "CAM", cam);
  Show(cam);
  EXPECT_EQ(Parameter(cam, "l_13"), "missing");
}

TEST_F(HostTest, RefusedInputsChangeNothingButTheMessage) {
  const std::string id = NewProtocol("GEAR1");
  Order(1, {{"z1", "-3"}}, "GEAR1");
  EXPECT_EQ(Show(id), 1);
  EXPECT_EQ(window.Reports(), 0);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), 0);
  EXPECT_EQ(Answer(1, "Result"), "Refused");
  EXPECT_EQ(Answer(1, "Message"), "Field \"z1\": -3 is outside 6 to 400 (teeth of the pinion).");
  EXPECT_EQ(KeyWord(id, "Hexaplan", "Message"), Answer(1, "Message"));
  EXPECT_EQ(Global(id, "TypeOfPart"), "");
  EXPECT_EQ(KeyWord(id, "Cadx", "Recalc"), "1");

  // The number of parts belongs to the first run.
  Show(id);
  Order(2, {{"parts", "3"}});
  Show(id);
  EXPECT_THAT(Answer(2, "Message"), HasSubstr("Field \"parts\""));
}

TEST_F(HostTest, ValuesThatTheCadChangedAreInputs) {
  const std::string id = NewProtocol("SHAFT");
  Show(id);
  auto record = ProtocolRecord::Open(store, id);
  record->PutParameter({"d_2", "60", "mm"});
  record->PutParameter({"VXP_PP_Mass", "9", "ND"});
  record->PutParameter({"Colour", "blue", ""});
  const std::string longText(3000, 'x');
  record->PutParameter({"Note", longText, "ND"});
  record->Close();
  Number(QM_HOST_RUN_COMMAND, {id});
  EXPECT_EQ(Parameter(id, "dMax"), "60 mm");
  EXPECT_EQ(Parameter(id, "Colour"), "blue ");
  EXPECT_EQ(Parameter(id, "Note"), longText + " ND");
  EXPECT_EQ(Parameter(id, "VXP_PP_Mass"), "9 ND");
}

TEST_F(HostTest, ShorterListsLeaveNothingBehind) {
  Order(1, {{"#spinForces", "1"}, {"ZX_0", "50"}, {"ZF1_0", "-100"}});
  const std::string id = NewProtocol("SHAFT");
  Show(id);
  EXPECT_EQ(Parameter(id, "ZX_0"), "50 mm");
  Order(2, {{"#spinForces", "0"}, {"#spiCount", "2"}, {"PX_1", "100"}});
  Show(id);
  EXPECT_EQ(Answer(2, "Result"), "Calculated");
  EXPECT_EQ(Parameter(id, "d_2"), "40 mm");
  for (const char* name : {"ZX_0", "ZF1_0", "d_3", "l_3", "#spiType_3"}) {
    EXPECT_EQ(Parameter(id, name), "missing") << name;
  }
}

TEST_F(HostTest, WhatItDoesNotKnowIsNotShown) {
  EXPECT_EQ(Show("NoSuchProtocol"), 0);
  EXPECT_FALSE(store.Exists("NoSuchProtocol"));
  EXPECT_EQ(Show(NewProtocol("SPRING")), 0);
  EXPECT_EQ(Show(std::string(400, 'x')), 0);
}

// The CAD side converts what the host cannot read; then it is calculated.
TEST_F(HostTest, TheOlderLayoutIsConvertedByTheCadFirst) {
  const std::string old = NewProtocol("SHAFT");
  const auto put = [&](int major, const char* count) {
    auto record = ProtocolRecord::Open(store, old);
    record->SetVersion(major, 0);
    record->PutParameter({count, "2", "ND"});
  };
  put(1, "ElNum");
  Order(1, {{"d_1", "33"}}, "SHAFT", old);
  const auto ask = [&] {
    EXPECT_EQ(Show(old), 1);
    EXPECT_EQ(window.Reports(), 1);
    EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_FROM_REFERENCE);
    EXPECT_EQ(CallbackList(), old);
    EXPECT_EQ(Answer(1, "Result"), "") << "it waits";
  };
  ask();
  Number(QM_HOST_DRAWN, {std::string("another")});
  EXPECT_EQ(Answer(1, "Result"), "");
  put(2, "#spiCount");
  Number(QM_HOST_DRAWN, {old});
  EXPECT_EQ(window.Reports(), 1);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_NEW_PART);
  EXPECT_EQ(CallbackList(), old);
  EXPECT_EQ(Answer(1, "Result"), "Calculated");
  EXPECT_EQ(Parameter(old, "d_1"), "33 mm");
  EXPECT_EQ(Parameter(old, "#spiCount"), "2 ND");

  platform::WriteProfileText(OrderFile(1), "Answer", "Result", "");
  put(1, "ElNum");
  ask();
  Number(QM_HOST_DRAWN, {std::string()});
  EXPECT_EQ(window.Reports(), 0);
  EXPECT_THAT(Answer(1, "Message"), HasSubstr("must be converted first"));
}

TEST_F(HostTest, AGroupCalculatesItsMembersInProtocolsOfTheirOwn) {
  const std::string group = NewProtocol("XTALVEK");
  EXPECT_EQ(Show(group), 1);
  EXPECT_EQ(window.Reports(), 0) << "nobody has entered anything";
  Order(1, {{"Name", "Bolts"}, {"Member1", "THRJOIN"}, {"Member1.d", "8"}, {"Member2", "SHAFT"}},
        "xtalvek");
  Show(group);
  EXPECT_EQ(window.Reports(), 1);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_NEW_PART);
  EXPECT_EQ(CallbackList(), group);
  const auto members = ProtocolRecord::Open(store, group)->Members();
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(Answer(1, "Protocols"), group + "," + members[0] + "," + members[1]);
  EXPECT_EQ(Parameter(members[0], "d"), "8 mm");
  EXPECT_EQ(KeyWord(members[0], "MCWParts", "Bolt"), members[0]);
  EXPECT_EQ(Global(members[1], "TypeOfPart"), "9");
  EXPECT_EQ(KeyWord(group, "SPProp", "Name"), "Bolts");

  const struct {
    std::vector<std::pair<std::string, std::string>> inputs;
    const char* message;
  } refused[] = {
      {{{"Name", "None"}}, "The group has no members."},
      {{{"Member1", "SPRING"}}, "Field \"Member1\": there is no calculation \"SPRING\"."},
      {{{"Member1", "THRJOIN"}, {"Member1.d", "-1"}}, "Member 1: Field \"d\""},
      {{{"Member1", "THRJOIN"}, {"Member2", "SHAFT"}, {"Member3", "SHAFT"}, {"Member3.d_1", "0"}},
       "Member 3: Field \"d_1\""},
  };
  int number = 1;
  for (const auto& row : refused) {
    Order(++number, row.inputs, "xtalvek", group);
    Show(group);
    EXPECT_EQ(window.Reports(), 0);
    EXPECT_THAT(Answer(number, "Message"), HasSubstr(row.message));
    EXPECT_EQ(ProtocolRecord::Open(store, group)->Members(), members);
  }

  Put(group, "Cadx", "FromCad", "1");
  Order(++number, {{"Member1", "THRJOIN"}, {"Member1.d", "10"}, {"Member2", "SHAFT"}}, "xtalvek");
  Show(group);
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), QM_CALLBACK_RECALCULATED);
  EXPECT_EQ(ProtocolRecord::Open(store, group)->Members(), members);
  EXPECT_EQ(Parameter(members[0], "d"), "10 mm");
}

TEST_F(HostTest, KeepsWhatTheSessionTellsIt) {
  Number(QM_HOST_SHOW_FLAG, {16});
  Number(QM_HOST_SETTINGS_NAME, {std::string("Drawboard")});
  Number(QM_HOST_SET_CAD_SPECIFIC, {std::string("Drawboard"), std::string("dbp,dbf")});
  Call(QM_HOST_SET_SMART_MODE, {1});
  Number(QM_HOST_SET_CAD_WINDOW, {4711});
  const CadSession& session = host.Session();
  EXPECT_EQ(session.mode, 2);
  EXPECT_EQ(session.callbackWindow, window.Handle());
  EXPECT_EQ(session.versionText + session.kindText, "258D");
  EXPECT_EQ(session.showFlag, 16);
  EXPECT_EQ(session.settingsName, "Drawboard");
  EXPECT_EQ(session.modelExtensions, "dbp,dbf");
  EXPECT_EQ(session.smartMode, 1);
  EXPECT_EQ(session.cadWindow, 4711u);
  EXPECT_EQ(std::get<std::string>(Call(QM_HOST_COMPANION_FOLDER, {})), kSuite);
}

TEST_F(HostTest, AnswersEveryMethodAndNoOther) {
  const std::string id = NewProtocol("SHAFT");
  Show(id);
  EXPECT_EQ(Number(QM_HOST_IS_READY), 1);
  EXPECT_EQ(Number(QM_HOST_COMMAND, {-1}), 1);
  EXPECT_EQ(Number(QM_HOST_DRAWN, {std::string()}), 1);
  EXPECT_EQ(Number(QM_HOST_SOLVE_ONE_LINK, {id, std::string("d_1")}), 0);
  for (int method : {QM_HOST_ANNOUNCE, QM_HOST_INIT_SOLUTION, QM_HOST_EDIT_LINKS}) {
    EXPECT_EQ(Number(method, {id}), 1) << method;
  }
  EXPECT_EQ(Number(QM_HOST_SOLVE_ONE_LINK, {id, std::string("d_1")}), 1);
  Call(QM_HOST_END_SOLUTION, {});
  EXPECT_EQ(Number(QM_HOST_SYNCHRONIZE, {id, 0}), 1);
  EXPECT_EQ(Number(QM_HOST_EDIT_ONE_LINK, {id, std::string("d_1")}), 1);
  EXPECT_EQ(Number(QM_HOST_FAMILY_TABLE, {id, std::string("t")}), 1);
  EXPECT_TRUE(std::get<bool>(Call(QM_HOST_UPDATE_EXT_DATA, {id, 0})));
  Call(QM_HOST_UPDATE_ALL, {});
  EXPECT_EQ(Number(QM_HOST_ANNOUNCE, {std::string("Nobody")}), 0);
  EXPECT_EQ(window.Reports(), 1);  // by Show alone

  EXPECT_EQ(host.FindMember("SetSmartMode"), QM_HOST_SET_SMART_MODE);
  EXPECT_EQ(host.FindMember("UpdateExtData"), QM_HOST_UPDATE_EXT_DATA);
  EXPECT_EQ(host.FindMember("ShowCalculation"), std::nullopt);
  EXPECT_EQ(host.Call(0x99, {}).status, AutomationStatus::UnknownMember);
  EXPECT_EQ(host.Call(QM_HOST_COMMAND, {id}).status, AutomationStatus::Failed);
  EXPECT_EQ(host.Call(QM_HOST_COMMAND, {}).status, AutomationStatus::Failed);
}

TEST_F(HostTest, DrawsIntoTheFileOfTheProtocol) {
  const std::string id = NewProtocol("SHAFT");
  Show(id);
  Put(id, "Files", "Output", "C:\\Vantorel\\drawing.dxf");
  Put(id, "LTParam", "AxisLenght", "3");
  EXPECT_EQ(std::get<std::int16_t>(Call(QM_HOST_WRITE_FILE, {id, 1})), 1);
  std::ifstream file(machine.HostPath("C:\\Vantorel\\drawing.dxf"));
  std::stringstream text;
  text << file.rdbuf();
  // The right end of the shaft, radius 20 at 150 mm, and the axis 3 mm beyond both ends.
  EXPECT_THAT(text.str(), HasSubstr("LINE\n  8\nOUTLINE\n 10\n150\n 20\n-20\n 11\n150\n 21\n20\n"));
  EXPECT_THAT(text.str(), HasSubstr("LINE\n  8\nCENTRE\n 10\n-3\n 20\n0\n 11\n153\n 21\n0\n"));
  EXPECT_EQ(std::get<std::int16_t>(Call(QM_HOST_WRITE_FILE, {NewProtocol("SHAFT"), 1})), 0);
}

// A host in the process of its caller draws what the caller holds open, which stays open.
TEST_F(HostTest, DrawsSymbolsFromAProtocolThatIsHeldOpen) {
  const std::string id = NewProtocol("SURFACE");
  Order(1, {{"Ra", "0.8"}, {"process", "2"}}, "SURFACE");
  Show(id);
  EXPECT_EQ(Global(id, "TypeOfPart"), "13");
  EXPECT_EQ(Global(id, "BOM2"), "Ra 0.8");
  const auto held = ProtocolRecord::Open(store, id);
  ProtocolRecord::OpenShared(store, id)->PutKeyWord("Files", "Output", "C:\\Vantorel\\s.dxf");
  EXPECT_EQ(std::get<std::int16_t>(Call(QM_HOST_WRITE_FILE, {id, 2})), 1);
  Number(QM_HOST_ANNOUNCE, {id});
  EXPECT_EQ(held->KeyWord("Files", "Output"), "C:\\Vantorel\\s.dxf");
  std::ifstream file(machine.HostPath("C:\\Vantorel\\s.dxf"));
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_THAT(text.str(), HasSubstr("CIRCLE"));
}

TEST_F(HostTest, EndsWhenItIsAskedTo) {
  const auto request = [&](const char* value) {
    auto record = ProtocolRecord::CreateNew(store);
    record->PutGlobal("Exit", value);
    record->Close();
    return record->Id();
  };
  const std::string stay = request("0");
  host.OnNotification(5000, stay);
  EXPECT_EQ(ends, 0);
  EXPECT_FALSE(store.Exists(stay));
  EXPECT_EQ(host.Session().callbackWindow, 0u);
  const std::string end = request("1");
  host.OnNotification(4102, end);
  EXPECT_EQ(ends, 0);
  host.OnNotification(5000, end);
  EXPECT_EQ(ends, 1);
}

// The senders store their requests only after they have sent them; none is left in the store.
TEST_F(HostTest, WaitsForExitRequestsThatAreNotStoredYet) {
  const std::pair<const char*, const char*> requests[] = {{"GROUPMANAGER", "0"}, {"CAD", "1"}};
  for (const auto& request : requests) host.OnNotification(5000, request.first);
  for (const auto& [name, answer] : requests) {
    char id[QM_PROTOCOL_ID_BUFFER] = {};
    std::strcpy(id, name);
    ASSERT_EQ(store.Functions().Com_OpenProtocol(id), 1);
    store.Functions().Com_PutGlobalData(id, "Exit", answer);
    ASSERT_NE(store.Functions().Com_CloseProtocol(id), 0);
  }
  EXPECT_EQ(ends, 0);
  const auto begin = platform::TickCount();
  while (ends == 0 && platform::TickCount() - begin < 5000) platform::PumpMessages();
  EXPECT_EQ(ends, 1);
  for (const auto& request : requests) EXPECT_FALSE(store.Exists(request.first)) << request.first;
}

TEST_F(HostTest, FaultsOnOrder) {
  const std::string faults = std::string(kSuite) + "\\HostFaults.ini";
  platform::WriteProfileText(faults, "Faults", "NotReady", "1");
  EXPECT_EQ(Number(QM_HOST_IS_READY), 0);
  platform::WriteProfileText(faults, "Faults", "DieInMethod", "2");
  EXPECT_EQ(Number(QM_HOST_CALLBACK_CODE), 0);
  EXPECT_EQ(deaths, 0);
  EXPECT_EQ(host.Call(QM_HOST_SHOW_CALCULATION, {std::string("P")}).status,
            AutomationStatus::ServerGone);
  EXPECT_EQ(deaths, 1);
}

}  // namespace
}  // namespace hexaplan
