// Commands on many protocols or large ones: the module alone on companions that return at once, and
// on the real storage library beside the same calls made again without the module.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "InstantCompanions.h"
#include "RealCompanions.h"
#include "commands/ProtocolCopies.h"
#include "commands/TreeScan.h"
#include "conversion/ProtocolConverter.h"
#include "parts/PartFactory.h"
#include "platform/Profile.h"

namespace quillmar::bench {
namespace {

using Ids = std::vector<std::string>;

constexpr const char* kTable = "C:\\ProtConv.ini";

int Count(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

// View keys of another model: what is converted keeps its own.
void WriteTable() { platform::WriteProfileText(kTable, "Bench_GEAR2_1->2", "OTHER", "NEW"); }

// On companions that return at once.
void Alone(benchmark::State& state, const StorageTable& storage, const CadDriverTable& driver,
           const Work& work) {
  const TemporaryMachine machine;
  const ModuleWorld world(storage, InstantLinks(), driver);
  WriteTable();
  const Step step = work(world);
  for (auto round : state) step();
  state.SetComplexityN(state.range(0));
}

// --- conversion ---

// Up to the current layout and down again, so that each round finds the same protocols. The table
// of view keys is read once, by the first of them.
void ConvertAll(const ModuleWorld& world, const Ids& ids) {
  ViewKeyMapping mapping;
  ProtocolConverter converter("Bench", kTable, mapping);
  std::vector<std::unique_ptr<VXProtocol>> further;
  for (const std::string& id : ids) {
    for (const int major : {kCurrentMajor, kOldMajor}) {
      VXProtocol protocol(world.Protocols(), id);
      converter.Convert(protocol, major, further, 0);
    }
  }
}

short QM_STDCALL GearKeyWord(const char*, const char*, const char* keyword, char* value) {
  std::strcpy(value, std::strcmp(keyword, "DataFile") == 0 ? "KeelData|GEAR2" : "1");
  return 1;
}
short version = 1;
short QM_STDCALL GetVersion(const char*, int* major, int* minor) {
  *major = version;
  *minor = 0;
  return 1;
}
short QM_STDCALL SetVersion(const char*, int major, int) {
  version = static_cast<short>(major);
  return 1;
}

void ConversionAlone(benchmark::State& state) {
  StorageTable storage = InstantStorage({});
  storage.Com_GetKeyWord.pointer = &GearKeyWord;
  storage.Com_GetVersion.pointer = &GetVersion;
  storage.Com_SetVersion.pointer = &SetVersion;
  const Ids ids(static_cast<std::size_t>(Count(state)), "P0000001");
  Alone(state, storage, InstantDriver(),
        [&](const ModuleWorld& world) -> Step { return [&] { ConvertAll(world, ids); }; });
}
BENCHMARK(ConversionAlone)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

// With all values that the conversions move or clear, among others.
std::string MakeOldGear(const ModuleWorld& world) {
  constexpr const char* kNames[] = {
      "cas", "snm1", "snm2", "bNavrh", "mNavrh", "cMax", "co1", "co2", "cd1", "cd2", "pk", "Fa1",
      "Fa2", "alfa", "beta", "mn",     "z1",     "z2",   "x1",  "x2",  "b1",  "b2",  "aw", "u"};
  VXProtocol protocol(world.Protocols());
  protocol.CreateNew();
  protocol.PutKeyWord("Main", "DataFile", "KeelData|GEAR2");
  protocol.PutViewKey("MODEL");
  for (const char* name : kNames) protocol.PutDataParam(name, "2.5", "mm");
  protocol.SetVersion(kOldMajor, 0);
  return protocol.GetProtocolID();
}

void ConversionOnRealStorage(benchmark::State& state, bool throughModule) {
  const auto prepare = [&](const ModuleWorld& world) -> Work {
    WriteTable();
    Ids ids;
    for (int i = 0; i < Count(state); ++i) ids.push_back(MakeOldGear(world));
    return [ids](const ModuleWorld& on) -> Step { return [ids, &on] { ConvertAll(on, ids); }; };
  };
  OnRealStorage(state, prepare, InstantDriver(), throughModule);
}
BENCHMARK_CAPTURE(ConversionOnRealStorage, ThroughModule, true)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ConversionOnRealStorage, Raw, false)->Arg(1000)->Unit(benchmark::kMillisecond);

// --- the tree scan ---

// Protocols are numbered, each links to the one before it, and the CAD has them all.
constexpr const char* kChainName = "CHAIN";
std::string ChainId(int number) { return kChainName + std::to_string(number); }
int NumberOf(const char* id) { return std::atoi(id + std::strlen(kChainName)); }

int QM_CDECL GetChained(const char* part, char* text, int* size) {
  const std::string reference = std::string(part) + "<@PID>";
  if (*size <= static_cast<int>(reference.size())) return 0;
  *size = static_cast<int>(reference.size());
  std::strcpy(text, reference.c_str());
  return 1;
}
short QM_STDCALL ChildrenOf(const char* id, const char*, char* list) {
  const int number = NumberOf(id);
  std::strcpy(list, number > 0 ? (ChainId(number - 1) + ";").c_str() : "");
  return 1;
}
short QM_STDCALL NoMembers(const char*, short* count) {
  *count = 0;
  return 1;
}

CadDriverTable ChainDriver() {
  CadDriverTable driver = InstantDriver();
  driver.GetProtocol.pointer = &GetChained;
  return driver;
}

void Scan(const ModuleWorld& world, int length) {
  TreeScan scan(world.Services(), {.parents = 0}, nullptr);
  scan.Scan(ChainId(length - 1));
  if (static_cast<int>(scan.Found().size()) != length) std::abort();
}

void ScanAlone(benchmark::State& state) {
  StorageTable storage = InstantStorage({});
  storage.Com_GetKeyList.pointer = &ChildrenOf;
  storage.Com_GetProtocolCount.pointer = &NoMembers;
  Alone(state, storage, ChainDriver(),
        [&](const ModuleWorld& world) -> Step { return [&] { Scan(world, Count(state)); }; });
}
BENCHMARK(ScanAlone)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

// Each links to the two behind it and back to the one before it, the last ones to the first: there
// is a circle at every step, and one through all.
int circleLength = 0;
short QM_STDCALL CirclesOf(const char* id, const char*, char* list) {
  std::string children;
  for (const int step : {1, 2, circleLength - 1}) {
    children += ChainId((NumberOf(id) + step) % circleLength) + ";";
  }
  std::strcpy(list, children.c_str());
  return 1;
}

void ScanOfCircles(benchmark::State& state) {
  circleLength = Count(state);
  StorageTable storage = InstantStorage({});
  storage.Com_GetKeyList.pointer = &CirclesOf;
  storage.Com_GetProtocolCount.pointer = &NoMembers;
  Alone(state, storage, ChainDriver(),
        [&](const ModuleWorld& world) -> Step { return [&] { Scan(world, Count(state)); }; });
}
BENCHMARK(ScanOfCircles)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

// The children are in the store, where the scan leaves them, and the CAD's texts carry the same.
Ids chainTexts;
int QM_CDECL GetStored(const char* part, char* text, int* size) {
  const std::string& reference = chainTexts.at(static_cast<std::size_t>(NumberOf(part)));
  if (*size <= static_cast<int>(reference.size())) return 0;
  *size = static_cast<int>(reference.size());
  std::strcpy(text, reference.c_str());
  return 1;
}

Work PrepareChain(const ModuleWorld& world, int length) {
  chainTexts.clear();
  for (int i = 0; i < length; ++i) {
    VXProtocol protocol(world.Protocols(), ChainId(i));
    protocol.PutKeyWord("Main", "DataFile", "KeelData|SHAFT");
    protocol.SetTypeOfPart(9);
    if (i > 0) protocol.PutKeyWord("LinksTo", ChainId(i - 1), "d");
    protocol.MakeReference(chainTexts.emplace_back(), Markers::Standard);
  }
  return [length](const ModuleWorld& on) -> Step { return [length, &on] { Scan(on, length); }; };
}

void ScanOnRealStorage(benchmark::State& state, bool throughModule) {
  CadDriverTable driver = InstantDriver();
  driver.GetProtocol.pointer = &GetStored;
  OnRealStorage(
      state, [&](const ModuleWorld& world) { return PrepareChain(world, Count(state)); }, driver,
      throughModule);
}
BENCHMARK_CAPTURE(ScanOnRealStorage, ThroughModule, true)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanOnRealStorage, Raw, false)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

// --- a group ---

void InsertGroup(const ModuleWorld& world, const std::string& group) {
  VXProtocol protocol(world.Protocols(), group);
  const auto part = CreatePartForProtocol(world.Services(), protocol);
  if (!part || !part->Insert(InsertMode::Plain)) std::abort();
}

std::string memberList;
short QM_STDCALL MemberList(const char*, char* list) {
  const std::size_t room = std::strlen(list);
  std::strncpy(list, memberList.c_str(), room);
  return 1;
}
short QM_STDCALL GroupKeyWord(const char* id, const char*, const char* keyword, char* value) {
  const bool isGroup = std::strcmp(id, "GROUP") == 0;
  const bool isFile = std::strcmp(keyword, "DataFile") == 0;
  const char* file = isGroup ? "KeelData|XtalVek" : "KeelData|GEAR1";
  std::strcpy(value, isFile ? file : std::strcmp(keyword, "DoNotErase") == 0 ? "1" : "");
  return 1;
}
short QM_STDCALL GroupData(const char* id, const char* item, char* value) {
  const bool isType = std::strcmp(item, "TypeOfPart") == 0;
  std::strcpy(value, !isType ? "0" : std::strcmp(id, "GROUP") == 0 ? "11" : "2");
  return 1;
}

void GroupAlone(benchmark::State& state) {
  StorageTable storage = InstantStorage({.parameters = 20});
  storage.Com_GetKeyWord.pointer = &GroupKeyWord;
  storage.Com_GetGlobalData.pointer = &GroupData;
  storage.Com_GetProtocolList.pointer = &MemberList;
  memberList.clear();
  for (int i = 0; i < Count(state); ++i) memberList += "M" + std::to_string(i) + ";";
  Alone(state, storage, InstantDriver(),
        [](const ModuleWorld& world) -> Step { return [&] { InsertGroup(world, "GROUP"); }; });
}
BENCHMARK(GroupAlone)
    ->Arg(20)
    ->Arg(200)
    ->Arg(2000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

void GroupOnRealStorage(benchmark::State& state, bool throughModule) {
  const auto prepare = [&](const ModuleWorld& world) -> Work {
    Ids members;
    for (int i = 0; i < Count(state); ++i) {
      members.push_back(MakeGear(world, static_cast<int>(state.range(1))));
    }
    VXProtocol group(world.Protocols());
    group.CreateNew();
    group.PutKeyWord("Main", "DataFile", "KeelData|XtalVek");
    group.SetTypeOfPart(11);
    for (const std::string& member : members) group.PutProtocol(member, member);
    const std::string id = group.GetProtocolID();
    return [id](const ModuleWorld& on) -> Step { return [id, &on] { InsertGroup(on, id); }; };
  };
  OnRealStorage(state, prepare, InstantDriver(), throughModule);
}
BENCHMARK_CAPTURE(GroupOnRealStorage, ThroughModule, true)
    ->Args({200, 20})
    ->Args({200, 2000})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(GroupOnRealStorage, Raw, false)
    ->Args({200, 20})
    ->Args({200, 2000})
    ->Unit(benchmark::kMillisecond);

// --- a copy ---

constexpr std::size_t kItemLength = 1000;

void Copy(const ModuleWorld& world, const std::string& reference) {
  ProtocolTexts texts;
  if (!CopyProtocol(world.Services(), reference, texts)) std::abort();
  VXProtocol::EraseById(world.Protocols(), texts.identifier);
}

// Of as many thousand characters.
void CopyAlone(benchmark::State& state) {
  const std::string item(kItemLength, 'x');
  const std::vector<std::string_view> items(static_cast<std::size_t>(Count(state)), item);
  std::string reference = "P0000001<@PID>";
  for (int i = 0; i < Count(state); ++i) reference += item + "<@EL>";
  Alone(state, InstantStorage({.buffer = items}), InstantDriver(),
        [&](const ModuleWorld& world) -> Step { return [&] { Copy(world, reference); }; });
}
BENCHMARK(CopyAlone)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

void CopyOnRealStorage(benchmark::State& state, bool throughModule) {
  const auto prepare = [&](const ModuleWorld& world) -> Work {
    VXProtocol protocol(world.Protocols());
    protocol.CreateNew();
    const std::string value(kItemLength, 'x');
    for (int i = 0; i < Count(state); ++i) {
      protocol.PutKeyWord("Text", "Line" + std::to_string(i), value);
    }
    std::string reference;
    protocol.MakeReference(reference, Markers::Standard);
    return [reference](const ModuleWorld& on) -> Step {
      return [reference, &on] { Copy(on, reference); };
    };
  };
  OnRealStorage(state, prepare, InstantDriver(), throughModule);
}
BENCHMARK_CAPTURE(CopyOnRealStorage, ThroughModule, true)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CopyOnRealStorage, Raw, false)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmar::bench
