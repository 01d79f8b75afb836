// Every call on the roads of the commands, groups, drawings and user parts fails in turn, once and
// from then on. What each failure reports is not written down here call by call; what must hold
// for all of them is.
#include <algorithm>
#include <filesystem>

#include "FailingCalls.h"
#include "OpenHandles.h"
#include "RoadContents.h"
#include "RoadTest.h"
#include "UserDialog.h"
#include "platform/Messages.h"
#include "platform/System.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

using test::Mode;

using Walk = std::function<int()>;

struct Command : Road {
  Command(const char* roadName, Walk (*roadBegin)(RoadTest& test), const char* last)
      : Road{roadName, roadBegin}, reaches(last) {}
  const char* reaches;  // a call that proves that the undisturbed road goes all the way
};

// Calls whose failure nobody is told of. A name that ends with "*" stands for all that begin so.
struct Unreported {
  const char* call;
  const char* because;
};
constexpr Unreported kUnreported[] = {
    {"Com_CloseProtocol", "the object has done with it, and nothing follows from it"},
    {"Com_EraseProtocol", "the same"},
    {"Com_EraseSection *", "what is not there cannot be erased either"},
    {"Com_GetVersion", "a protocol without a version stays in its layout"},
    {"Com_SetVersion *", "the next conversion writes it"},
    {"Com_GetViewKey", "a protocol needs none"},
    {"Com_IsProtocolExists", "no: there is none"},
    {"GetPart", "no: nothing is selected"},
    {"GetProtocol", "no: the object has none"},
    {"GetAllParts", "no: there is no list"},
    {"GetAssemblyName", "no: it has none"},
    {"GetAssemblyPath", "no: it was never saved"},
    {"GetConfiguration", "the first asks for the length alone"},
    {"IsInchUserPart", "no: it is none"},
    {"GetMainHwnd*", "no: there is no window"},
    {"McSetForegroundWindow", "the user sees that it is not in front"},
    {"CreateDxfFile", "the CAD tells its user"},
    {"CreatePreview", "the same"},
    {"GetPoint", "the user wanted none"},
    {"GenerateLisp", "its own list of errors is shown"},
    {"Group*", "the CAD works without the bracket"},
    {"InsertBoltedConnection", "its library tells the user"},
    {"InsertNamedProtocol", "the members stand in the CAD without it"},
    {"ChangeNamedProtocol", "the same"},
    {"SetPartsVisibility", "the parts are shown as before"},
    {"host *", "the host shows its user what it could not do"},
};

bool IsUnreported(const std::string& call) {
  return std::any_of(std::begin(kUnreported), std::end(kUnreported), [&](const Unreported& row) {
    const std::string_view name = row.call;
    return name.back() == '*' ? call.starts_with(name.substr(0, name.size() - 1)) : call == name;
  });
}

// --- how each begins ---

template <int kNumber>
Walk Selected(RoadTest& test) {
  Select();
  return test.Queued(kNumber);
}

// The object of a view whose source stands in the CAD too.
template <int kNumber>
Walk SelectedView(RoadTest& test) {
  const std::string source = PutIntoCad();
  Select({{"Cadx", "NewView", "1"}, {"LinksFrom", "NewView", source + "@NewView"}});
  return test.Queued(kNumber);
}

// The object of a bolt, whose connection has two parts.
template <int kNumber>
Walk SelectedBolt(RoadTest& test) {
  const std::string main = Reference({{"MCWParts", "Bolt", "B1"}, {"MCWParts", "Nut1", "N1"}});
  Select({{"MCWData", "MCWDataFile", "wbolcon"}, {"MCWData", "MCWMainProt", Alternate(main)}});
  return test.Queued(kNumber);
}

// What the scan finds: a part in the CAD with a child that is there no more.
std::string Tree() { return PutIntoCad({{"LinksTo", "GONE", "d"}}); }

Walk SelectedTree(RoadTest& test) {
  Select({{"LinksTo", Tree(), "d"}});
  return test.Queued(8);
}

void MakeAssembly() {
  const std::string reference =
      Reference({{"Main", "DataFile", "KeelData|userpart"}, {"LinksTo", Tree(), "d"}});
  Answer("GetAssembly.first", "Gearbox");
  Answer("GetAssembly.second", "GEARBOX");
  Answer("GetAssembly.text", reference);
  Answer("GetAssemblyPath.path", "C:\\Models\\Gearbox.asm");
}

template <int kNumber>
Walk OnAssembly(RoadTest& test) {
  MakeAssembly();
  return test.Queued(kNumber);
}

// The CAD has none yet.
template <int kNumber>
Walk WithoutAssembly(RoadTest& test) {
  Answer("GetAssemblyName.name", "Gearbox");
  Answer("GetAssembly", "0");
  return test.Queued(kNumber);
}

template <int kNumber>
Walk OnAllParts(RoadTest& test) {
  MakeAssembly();
  Answer("GetAllParts.text", Reference() + "<@NEXT_PROT>" + Reference());
  Answer("Link_GetLinksToCount", "1");
  return test.Queued(kNumber);
}

Walk OptimizedObject(RoadTest& test) {
  Select();
  return [&test] { return test.Module().CallOptim(); };
}

// The temporary files that the library makes for others to draw into.
std::vector<std::filesystem::path> DrawingFiles() {
  std::vector<std::filesystem::path> drawings;
  for (const auto& file : std::filesystem::directory_iterator(OwnPath(platform::TempFolder()))) {
    const std::string name = file.path().filename().string();
    if (name.starts_with("FEM") || name.starts_with("HXD")) drawings.push_back(file.path());
  }
  return drawings;
}

// What is drawn is the caller's. The names run short when nobody removes them.
void RemoveDrawings() {
  for (const std::filesystem::path& file : DrawingFiles()) std::filesystem::remove(file);
}

Walk Fem(RoadTest& test) {
  RemoveDrawings();
  return [&test] { return test.Module().CallFem(); };
}

std::string MakeDrawn() {
  return MakeShaft({{"View", "Visibled", "1"}, {"Position", "InfPoint", "1.5 -2.25"}});
}

Walk Drawing(RoadTest& test) {
  RemoveDrawings();
  test.Host().Answer("24");
  return [&test, id = MakeDrawn()] {
    std::string copy(260, '\0');
    std::string connection(70000, '\0');
    std::string file(260, '\0');
    int capacity = 70000;
    int metric = 0;
    double x = 0, y = 0, level = 0;
    ExtDataPair* pairs = nullptr;
    int count = 0;
    const int result =
        test.Module().Create2dPart(id.c_str(), copy.data(), connection.data(), &capacity,
                                   file.data(), &metric, &x, &y, &level, &pairs, &count, 1);
    test.Module().DeleteBomInfo(pairs, count);
    return result;
  };
}

Walk Format(RoadTest& test) {
  test.Host().Answer("2");
  return [&test] { return test.Module().ShowFormat("DIN", 0.25); };
}

Walk Picture(RoadTest& test) {
  RemoveDrawings();
  test.Host().Answer("24");
  return [&test, id = MakeDrawn()] {
    std::string path(260, '\0');
    return test.Module().MakePicture(id.c_str(), path.data());
  };
}

Walk Values(RoadTest& test) {
  return [&test, reference = Reference()] {
    std::string out(100, '\0');
    return test.Module().GetDataValues(reference.c_str(), "mass", out.data(), 100);
  };
}

Walk Import(RoadTest& test) {
  return [&test] { return test.Module().ImportWizard(3, 1, "C:\\Parts\\bolt.stp"); };
}

// The user names a part, and the CAD has two drawings of it.
Walk UserPart(RoadTest& test, const std::string& companions, int (*add)(const Exports& module)) {
  test.Host().Answer("32", companions);
  const std::string base = platform::TempFolder() + "\\Lever";
  Answer("CreatePreview.fileName", base + ".bmp");
  Answer("CreateDxfFile(" + base + "2.dxf)", "0");
  return [&test, add] {
    UserDialog user("Lever", "front", 0);
    return add(test.Module());
  };
}

Walk LispPart(RoadTest& test) {
  return UserPart(test, kSuiteFolder, [](const Exports& module) { return module.AddUTPart(); });
}

// There is no wizard, and nobody waits for one.
Walk DxfPart(RoadTest& test) {
  return UserPart(test, "C:\\Nowhere", [](const Exports& module) { return module.AddUTDXFPart(); });
}

Walk Information(RoadTest& test) {
  return [&test, id = MakeShaft()] {
    int local = 0;
    std::string model(1024, '\0'), file(1024, '\0'), caption(1024, '\0');
    return test.Module().GetPartInformation(id.c_str(), 0, 0, &local, model.data(), file.data(),
                                            caption.data());
  };
}

// A group of an assembly, a bolted joint that its library inserts, and a shaft.
Walk Group(RoadTest& test, int code, const Keywords& more) {
  const std::string members[] = {
      MakeShaft({{"Main", "DataFile", "KeelData|asmpart"}}),
      MakeShaft({{"Main", "DataFile", "THRJOIN"}, {"MCWParts", "Bolt", ""}}),
      MakeShaft({{"Cadx", "DoNotErase", "0"}})};
  { Record(members[0]).SetGlobal("TypeOfPart", "10").SetParameter("VXP_FS_Nut", "0", ""); }
  Keywords keywords = {{"Main", "DataFile", "KeelData|xtalvek"}, {"SPProp", "Name", "Gearbox"}};
  keywords.insert(keywords.end(), more.begin(), more.end());
  const std::string id = MakeShaft(keywords);
  {
    Record group(id);
    for (const std::string& member : members) group.SetMember(member);
    group.SetKeyWord("SuperProtocolOrder", "Order",
                     members[0] + ";" + members[1] + ";" + members[2]);
  }
  return test.Callback(code, id);
}

Walk NewGroup(RoadTest& test) { return Group(test, QM_CALLBACK_NEW_PART, {}); }
Walk LoopGroup(RoadTest& test) {
  return Group(test, QM_CALLBACK_NEW_PART, {{"Cadx", "Loop", "1"}});
}
Walk ChangedGroup(RoadTest& test) {
  return Group(test, QM_CALLBACK_RECALCULATED, {{"Cadx", "FromCad", "1"}});
}

const Command kCommands[] = {
    {"Recalculate", Selected<1>, "host 2"},
    {"RecalculateBolt", SelectedBolt<1>, "host 2"},
    {"RecalculateView", SelectedView<1>, "host 2"},
    {"RecalculateSource", SelectedView<3>, "host 2"},
    {"UpdateView", SelectedView<4>, "host 27"},
    {"CopyView", SelectedView<5>, "host 19"},
    {"HandOverBolts", SelectedBolt<6>, "SendModelessMessage"},
    {"ScanAssembly", OnAssembly<7>, "host 2"},
    {"ScanNewAssembly", WithoutAssembly<7>, "InsertAssembly"},
    {"ScanSelected", SelectedTree, "host 2"},
    {"ConnectAssembly", WithoutAssembly<9>, "InsertAssembly"},
    {"ScanBillOfMaterials", OnAssembly<10>, "host 2"},
    {"DetachView", SelectedView<103>, "host 2"},
    {"RefreshAllLinks", OnAllParts<4001>, "host 2"},
    {"UpdateExtendedData", OnAllParts<4002>, "ChangeShaft"},
    {"DataWizard", Selected<4003>, "GetParameterListEx"},
    {"CreateUniqueCopy", Selected<4004>, "ConnectProtocol"},
    {"CallOptim", OptimizedObject, "host 2"},
    {"CallFem", Fem, "host 2"},
    {"Create2dPart", Drawing, "host 24"},
    {"ShowFormat", Format, "host 2"},
    {"MakePicture", Picture, "host 24"},
    {"AddUTPart", LispPart, "GenerateLisp"},
    {"AddUTDXFPart", DxfPart, "CreateDxfFile"},
    {"GetDataValues", Values, "Com_EraseProtocol"},
    {"ImportWizard", Import, "Com_CloseProtocol"},
    {"GetPartInformation", Information, "Com_CloseProtocol"},
    {"NewGroup", NewGroup, "InsertNamedProtocol"},
    {"LoopGroup", LoopGroup, "GetPhysicalPropertiesEx"},
    {"ChangedGroup", ChangedGroup, "ChangeNamedProtocol"},
};

}  // namespace

// Whether a dialog is shown depends on the memory that there is for it.
std::vector<Road> RoadsWithoutDialogs() {
  std::vector<Road> roads(std::begin(kCommands), std::end(kCommands));
  std::erase_if(roads,
                [](const Road& road) { return road.begin == LispPart || road.begin == DxfPart; });
  return roads;
}

namespace {

void PrintTo(const Command& command, std::ostream* out) { *out << command.name; }

// --- the sweep ---

// What one walk came to.
struct Round {
  int result = 0;
  std::vector<std::string> calls;
  std::vector<bool> succeeded;  // by call
  std::vector<std::string> reports;
  int stored = 0;  // protocols, more than before
  long files = 0;  // temporary drawings, more than before
  int open = 0;
};

// What is written into a call's line may name a new protocol.
std::vector<std::string> Names(const std::vector<std::string>& calls) {
  std::vector<std::string> names;
  for (const std::string& call : calls) {
    names.push_back(call.starts_with("host") ? call : call.substr(0, call.find(' ')));
  }
  return names;
}

bool Tells(const Round& round, std::vector<std::string> usual) {
  for (const std::string& report : round.reports) {
    const auto found = std::find(usual.begin(), usual.end(), report);
    if (found == usual.end()) return true;
    usual.erase(found);
  }
  return false;
}

// An assembly that the CAD does not tell gets a protocol, which stays when the CAD does tell then.
bool MayLeaveOne(const std::string& failed) {
  return failed == "Com_EraseProtocol" || failed == "GetAssembly";
}

class CommandSweep : public RoadTest,
                     public testing::WithParamInterface<std::tuple<Command, Mode>> {
 protected:
  Round Take(const Command& command, int failing, Mode mode) {
    const auto walk = Begin(command);
    Round round;
    const int stored = strict::Core().Strict_StoredProtocols();
    const long files = std::ssize(DrawingFiles());
    fault = {failing, mode};
    strict::Core().Strict_SetVisitor(&CountAndRefuse);
    round.result = walk();
    strict::Core().Strict_SetVisitor(nullptr);
    round.calls = Lines();
    for (int call = FirstCall(); call < strict::Core().Strict_CallCount(); ++call) {
      round.succeeded.push_back(strict::Core().Strict_CallResult(call) != 0);
    }
    round.reports = Reports();
    round.stored = strict::Core().Strict_StoredProtocols() - stored;
    round.files = std::ssize(DrawingFiles()) - files;
    round.open = strict::Core().Strict_OpenProtocols();
    return round;
  }
};

TEST_P(CommandSweep, EveryCallInTurn) {
  const auto& [command, mode] = GetParam();
  module.Set2dFileType(2);
  Take(command, 0, mode);  // what is bound or connected once is so from then on
  const Round usual = Take(command, 0, mode);
  const std::vector<std::string> usualNames = Names(usual.calls);
  if (!kHostIsAProcess || !std::string_view(command.reaches).starts_with("host ")) {
    EXPECT_THAT(Names(usual.calls), testing::Contains(command.reaches));
  }
  EXPECT_EQ(usual.open, 0);
  const int handles = OpenHandles();
  for (std::size_t failing = 1;; ++failing) {
    const Round round = Take(command, static_cast<int>(failing), mode);
    if (usual.calls.size() < failing || round.calls.size() < failing) break;
    const std::string& failed = round.calls[failing - 1];
    SCOPED_TRACE(std::to_string(failing) + " " + failed);
    EXPECT_THAT(round.result, testing::AnyOf(0, usual.result));
    // What fails anyhow is not there, and was told of then.
    EXPECT_TRUE(!usual.succeeded[failing - 1] || IsUnreported(failed) ||
                Tells(round, usual.reports));
    EXPECT_LE(round.files, round.result != 0 ? std::max(usual.files, 0L) : 0L);
    // A store that closes and erases nothing any more has them left.
    if (mode == Mode::Once) {
      EXPECT_LE(round.open, failed == "Com_CloseProtocol" ? 1 : 0);
      EXPECT_LE(round.stored, std::max(usual.stored, 0) + (MayLeaveOne(failed) ? 1 : 0));
    }
    // Up to the call that fails now, nothing is left of the failure before.
    std::vector<std::string> before = Names(round.calls);
    before.resize(failing);
    ASSERT_EQ(before, std::vector<std::string>(usualNames.begin(),
                                               usualNames.begin() + static_cast<long>(failing)));
  }
  const Round again = Take(command, 0, mode);
  EXPECT_EQ(again.result, usual.result);
  EXPECT_EQ(Names(again.calls), usualNames);
  EXPECT_EQ(again.reports, usual.reports);
  EXPECT_EQ(again.stored, usual.stored);
  EXPECT_EQ(OpenHandles(), handles);
}

INSTANTIATE_TEST_SUITE_P(Commands, CommandSweep,
                         testing::Combine(testing::ValuesIn(kCommands),
                                          testing::Values(Mode::Once, Mode::FromThenOn)),
                         [](const auto& info) {
                           return std::get<0>(info.param).name +
                                  std::string(NameOf(std::get<1>(info.param)));
                         });

}  // namespace
}  // namespace quillmar::contract
