#include "RoadTest.h"

#include <map>

#include "RoadContents.h"
#include "Roads.h"
#include "platform/Messages.h"
#include "platform/Profile.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

constexpr const char* kKeywords[][3] = {
    {"Main", "DataFile", "KEELDATA|SHAFT"},
    {"Cadx", "ReallySmartPart", "1"},
    {"Cadx", "FromCad", "0"},
    {"Cadx", "Loop", "0"},
    {"Cadx", "Optim", "0"},
    {"Cadx", "DoNotErase", "1"},
    {"Object", "CadDescription", "Shaft"},
    {"Object", "ProtID", "OBJ1"},
    {"Grupova", "UseUserDescription", "0"},
    {"Hexaplan", "UpdateAll", "0"},
    {"Hexaplan", "FromSymbols", "0"},
};

constexpr const char* kGlobals[][2] = {
    {"TypeOfPart", "9"}, {"Caption", "Shaft"}, {"Model", "Shaft"}, {"Path", "C:\\Models"},
    {"Changed", "0"},    {"WDOperation", "0"}, {"Unit", "mm"},     {"ReallyScan", "1"},
};

// What is written stands last in a call and is not looked at here.
const std::map<std::string, std::size_t> kWrittenTexts = {
    {"Com_PutKeyWord", 1},   {"Com_PutGlobalData", 1}, {"Com_PutDataParam", 2},
    {"Com_PutBuffer", 1},    {"Com_PutViewKey", 1},    {"Com_PutModelID", 1},
    {"Com_CopyProtocol", 1}, {"Link_SetLinkTo", 1},    {"Link_SetLinkFrom", 1}};

std::string StorageLine(int call, const std::string& function) {
  const strict::CoreFunctions& core = strict::Core();
  const auto written = kWrittenTexts.find(function);
  const int count = core.Strict_CallArgumentCount(call) -
                    static_cast<int>(written == kWrittenTexts.end() ? 0 : written->second);
  std::string line = function;
  // The identifier comes first.
  for (int i = 1; i < count; ++i) {
    const std::string argument = core.Strict_CallArgument(call, i);
    if (argument == "out" || argument.starts_with('[')) continue;
    line += (i == 1 ? " " : "|") + argument;
  }
  return line;
}

}  // namespace

// --- what the roads meet ---

// A calculated shaft in which every keyword that the roads read is there, but for those that the
// roads take as missing.
void FillShaft(Record& record, const Keywords& more) {
  for (const auto& [section, keyword, value] : kKeywords) {
    record.SetKeyWord(section, keyword, value);
  }
  for (const auto& [item, value] : kGlobals) record.SetGlobal(item, value);
  record.SetParameter("mass", "2.5", "kg").SetModelId("Shaft").SetViewKey("MODEL");
  for (const auto& [section, keyword, value] : more) {
    record.SetKeyWord(section, keyword.c_str(), value);
  }
}

std::string MakeShaft(const Keywords& more) {
  Record record;
  FillShaft(record, more);
  return record.Id();
}

namespace {

struct OldValue {
  const char* name;
  const char* value;
};

std::string MakeOld(const char* dataFile, std::initializer_list<OldValue> values) {
  Record record;
  FillShaft(record, {{"Main", "DataFile", dataFile}});
  for (const auto& [name, value] : values) record.SetParameter(name, value, "mm");
  record.SetVersion(1, 0);
  return record.Id();
}

// What the CAD sent last time, and what it sends now.
const Keywords kReadBack = {{"Cadx", "CADVars", "a"}, {"Data", "a", "1"}};
constexpr const char* kNewList = "b,2";
const Keyword kPartName = {"Cadx", "PartName", "Shaft"};

}  // namespace

void Answer(const std::string& key, const std::string& answer) {
  strict::Core().Strict_SetAnswer(key.c_str(), answer.c_str());
}

std::string Reference(const Keywords& more) {
  std::string reference;
  std::string id;
  {
    Record record;
    FillShaft(record, more);
    id = record.Id();
    reference = record.Reference();
  }
  Erase(id);
  return reference;
}

std::string PutIntoCad(const Keywords& more) {
  const std::string reference = Reference(more);
  const std::string id = reference.substr(0, reference.find("<@PID>"));
  Answer("GetProtocol(" + id + ").text", reference);
  return id;
}

void Select(const Keywords& more) {
  Keywords keywords = kReadBack;
  keywords.push_back({"Main", "DataFile", "KEELDATA|SPRING"});
  keywords.push_back({"Cadx", "NewView", "0"});
  keywords.insert(keywords.end(), more.begin(), more.end());
  const std::string reference = Reference(keywords);
  Answer("GetPart.partName", "Spring:1");
  Answer("GetPart.text", reference);
  Answer("GetProtocol(Spring:1).text", reference);
}

std::string Alternate(std::string reference) {
  for (const auto& [standard, alternate] :
       {std::pair{"<@PID>", "<@GMHPID>"}, std::pair{"<@EL>", "<@GMHEL>"}}) {
    for (std::size_t at; (at = reference.find(standard)) != std::string::npos;) {
      reference.replace(at, std::string(standard).size(), alternate);
    }
  }
  return reference;
}

namespace {

// --- how each begins ---

using Walk = std::function<int()>;

template <int kCode>
Walk BeginPlain(RoadTest& test) {
  return test.Callback(kCode, MakeShaft());
}

Walk BeginViews(RoadTest& test) {
  return test.Callback(QM_CALLBACK_NEW_PART, MakeShaft({{"McwViews", "View1", "Front,MODEL7"},
                                                        {"McwViews", "View2", "Side,MODEL8"},
                                                        {"Globals", "Path", "C:\\Models\\"},
                                                        {"Calc", "CalcName", "Shaft"},
                                                        kPartName}));
}

Walk BeginClipboard(RoadTest& test) {
  const std::string source = MakeShaft();
  Record("KEELCLIP").SetKeyWord("Object", "ProtID", source);
  return test.Callback(QM_CALLBACK_CLIPBOARD_OR_CHANGED_TYPE,
                       MakeShaft({{"Cadx", "Update", "0"}, kPartName}));
}

Walk BeginChild(RoadTest& test) {
  const std::string id = MakeShaft({kPartName});
  Record(id).SetLinkFrom("NewView", MakeShaft() + "@NewView");
  return test.Callback(QM_CALLBACK_NEW_VIEW, id);
}

Walk BeginLoop(RoadTest& test) {
  Keywords keywords = kReadBack;
  keywords.push_back({"Cadx", "Loop", "1"});
  return test.Callback(QM_CALLBACK_NEW_PART, MakeShaft(keywords));
}

Walk BeginViewUpdate(RoadTest& test) {
  const std::string view = MakeShaft();
  Answer("GetProtocol(" + view + ").text", Record(view).Reference());
  const std::string id = MakeShaft(
      {{"McwProtOrder", "View1", view}, {"Data", "VXP_RD_a", "9"}, {"Calc", "CalcName", "Shaft"}});
  Record(id).SetLinkTo("NewView", view);
  return test.Callback(QM_CALLBACK_RECALCULATED, id);
}

Walk BeginOldGear(RoadTest& test) {
  return test.Callback(151, MakeOld("KEELDATA|GEAR2", {{"cas", "0.25"}}));
}

Walk BeginOldShaft(RoadTest& test) {
  return test.Callback(151, MakeOld("KEELDATA|SHAFT", {{"ElNum", "1"},
                                                       {"drazka_1", "2"},
                                                       {"d_1", "20"},
                                                       {"l_1", "50"},
                                                       {"npodpor", "1"},
                                                       {"nzat", "1"},
                                                       {"PXrel_0", "5"},
                                                       {"ZF0_0", "7"}}));
}

template <int kNumber>
Walk BeginCommand(RoadTest& test) {
  Select();
  return test.Queued(kNumber);
}

// Texts that an export hands out.
struct Handed {
  std::string id = std::string(260, '\0');
  std::string reference = std::string(100000, '\0');
  int number = 100000;
};

Walk BeginCopyOfProtocol(RoadTest& test) {
  return [&test, reference = Reference({})] {
    Handed out;
    return test.Module().CopyProtocol(reference.c_str(), out.id.data(), out.reference.data());
  };
}

Walk BeginTypeOfProtocol(RoadTest& test) {
  return [&test, reference = Reference(
                     {{"MCWData", "MCWDataFile", "wbolcon"}, {"Calc", "CalcName", "Bolt"}})] {
    Handed out;
    return test.Module().GetProtocolType(reference.c_str(), out.reference.data(), &out.number);
  };
}

Walk BeginBoltedProtocols(RoadTest& test) {
  const std::string main = Alternate(Reference({{"MCWParts", "Bolt", "B1"}}));
  return [&test, reference = Reference({{"MCWData", "MCWMainProt", main}})] {
    Handed out;
    return test.Module().GetAllMCWProtocolIDs(reference.c_str(), out.reference.data(), &out.number);
  };
}

Walk BeginObtain(RoadTest& test) {
  const std::string id = MakeShaft();
  Answer("GetProtocol(Shaft:1).text", Record(id).Reference());
  return [&test] { return test.Module().ObtainProtocol("Shaft:1"); };
}

Walk BeginUserProtocol(RoadTest& test) {
  return [&test] {
    Handed out;
    return test.Module().CreateUserProtocol(out.id.data(), out.reference.data(), "Lever");
  };
}

Walk BeginPartProtocol(RoadTest& test) {
  return [&test] {
    Handed out;
    return test.Module().CreatePartProtocol("KeelData|SPRING", "ISO", "MODEL", "b,2", out.id.data(),
                                            out.reference.data(), &out.number);
  };
}

}  // namespace

std::vector<Road> Roads() {
  return {{"Insert", BeginPlain<QM_CALLBACK_NEW_PART>, test::PlainInsert},
          {"InsertWithViews", BeginViews, test::InsertWithViews},
          {"ClipboardInsert", BeginClipboard, test::ClipboardInsert},
          {"ChildInsert", BeginChild, test::ChildInsert},
          {"LoopInsert", BeginLoop, test::LoopInsert},
          {"Update", BeginPlain<QM_CALLBACK_RECALCULATED>, test::PlainUpdate},
          {"UpdateWithView", BeginViewUpdate, test::UpdateWithView},
          {"OtherCode", BeginPlain<151>, test::OtherCode},
          {"OldGear", BeginOldGear, test::OldGear},
          {"OldShaft", BeginOldShaft, test::OldShaft},
          {"ReplaceCommand", BeginCommand<2>, test::ReplaceCommand},
          {"UpdateCommand", BeginCommand<4>, test::UpdateCommand},
          {"CopyCommand", BeginCommand<5>, test::CopyCommand},
          {"CopyProtocol", BeginCopyOfProtocol, test::CopyOfProtocol},
          {"GetProtocolType", BeginTypeOfProtocol, test::TypeOfProtocol},
          {"GetAllMCWProtocolIDs", BeginBoltedProtocols, test::BoltedProtocols},
          {"ObtainProtocol", BeginObtain, test::ObtainedProtocol},
          {"CreateUserProtocol", BeginUserProtocol, test::UserProtocol},
          {"CreatePartProtocol", BeginPartProtocol, test::PartProtocol}};
}

RoadTest::RoadTest() {
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
  SetText(Hive::CurrentUser, kModuleKey + "\\Sweep\\OptGeneral2", "LocalFileName", "%CBFName%");
  LoginArguments arguments;
  arguments.settingsName = "Sweep";
  StartSession(arguments);
}

std::function<int()> RoadTest::Callback(int code, const std::string& protocolId) {
  host.Announce(code, protocolId);
  return [] {
    platform::PumpMessages();
    return 0;
  };
}

std::function<int()> RoadTest::Queued(int number) {
  module.CallUTFunction(number);
  return [] {
    platform::PumpMessages();
    return 0;
  };
}

std::function<int()> RoadTest::Begin(const Road& road) {
  // The guarded memory of the companions is limited.
  EXPECT_EQ(strict::Core().Strict_ViolationCount(), 0);
  strict::Core().Strict_Reset();
  Answer("GetParameterListEx.text", kNewList);
  auto walk = road.begin(*this);
  ForgetCalls();
  Reports();
  return walk;
}

std::vector<std::string> RoadTest::Lines() {
  std::vector<std::string> lines;
  for (int call = FirstCall(); call < strict::Core().Strict_CallCount(); ++call) {
    const std::string function = strict::Core().Strict_CallFunction(call);
    const bool isStorage = function.starts_with("Com_") || function.starts_with("Link_");
    lines.push_back(isStorage ? StorageLine(call, function) : function);
  }
  return lines;
}

std::vector<std::string> RoadTest::Reports() {
  std::vector<std::string> messages;
  for (const std::string& text : debugger.Take()) {
    // The summary of a failed step ends with a line end, a report does not.
    if (!text.ends_with('\n')) messages.push_back(text.substr(0, text.find('\n')));
  }
  return messages;
}

}  // namespace quillmar::contract
