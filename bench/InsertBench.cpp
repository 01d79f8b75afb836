// Insert and update of a parametric part: the module alone, and on the real storage library beside
// the same library calls made again without the module.
#include <benchmark/benchmark.h>

#include <string>

#include "InstantCompanions.h"
#include "ModuleWorld.h"
#include "RealCompanions.h"
#include "parts/PartFactory.h"

namespace quillmar::bench {
namespace {

void InsertPart(const PartServices& services, VXProtocol& protocol) {
  const auto part = CreatePartForProtocol(services, protocol);
  benchmark::DoNotOptimize(part->Insert(InsertMode::Plain));
}

void UpdatePart(const PartServices& services, VXProtocol& protocol) {
  const auto part = CreatePartForProtocol(services, protocol);
  benchmark::DoNotOptimize(part->Update());
}

using Road = void (*)(const PartServices&, VXProtocol&);

void ModuleAlone(benchmark::State& state, Road road) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({.parameters = static_cast<int>(state.range(0))}),
                    InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  for (auto step : state) road(world.Services(), protocol);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(ModuleAlone, Insert, &InsertPart)->Arg(20)->Arg(200)->Arg(2000);
BENCHMARK_CAPTURE(ModuleAlone, Update, &UpdatePart)->Arg(20)->Arg(200)->Arg(2000);

void InsertWithViews(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({.parameters = 20, .views = static_cast<int>(state.range(0))}),
                    InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  for (auto step : state) InsertPart(world.Services(), protocol);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(InsertWithViews)->Arg(1)->Arg(10)->Arg(99);

void ForwardedCall(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({}), InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  for (auto step : state) benchmark::DoNotOptimize(protocol.PutKeyWord("Cadx", "Optim", "0"));
}
BENCHMARK(ForwardedCall);

std::string MakeRealProtocol(const ModuleWorld& world, int parameters) {
  VXProtocol protocol(world.Protocols());
  protocol.CreateNew();
  protocol.PutKeyWord("Main", "DataFile", "KEELDATA|GEAR1");
  protocol.SetTypeOfPart(2);
  protocol.PutGlobalData("Caption", "Gear");
  protocol.PutViewKey("MODEL");
  for (int i = 0; i < parameters; ++i) {
    protocol.PutDataParam("parameter" + std::to_string(i), std::to_string(i * 0.5), "mm");
  }
  return protocol.GetProtocolID();
}

// One road of an open protocol through the module, or the library calls that it made, made again.
void PartOnRealStorage(benchmark::State& state, Road road, bool throughModule) {
  RealCompanions real;
  if (!real.Loaded()) {
    state.SkipWithError("the storage library is not in the image");
    return;
  }
  Recording calls;
  Recording* recordTo = nullptr;
  const RecordingTables tables = RecordInto(real.Storage(), real.Links(), recordTo);
  ModuleWorld recorded(tables.storage, tables.links, InstantDriver());
  ModuleWorld direct(real.Storage(), real.Links(), InstantDriver());
  const std::string id = MakeRealProtocol(direct, static_cast<int>(state.range(0)));
  {
    VXProtocol protocol(recorded.Protocols(), id);
    road(recorded.Services(), protocol);
    recordTo = &calls;
    road(recorded.Services(), protocol);
    recordTo = nullptr;
  }
  VXProtocol protocol(direct.Protocols(), id);
  for (auto step : state) {
    if (throughModule) {
      road(direct.Services(), protocol);
    } else {
      for (auto& call : calls) call();
    }
  }
  state.counters["calls"] = static_cast<double>(calls.size());
}
BENCHMARK_CAPTURE(PartOnRealStorage, InsertThroughModule, &InsertPart, true)
    ->Arg(20)
    ->Arg(200)
    ->Arg(2000);
BENCHMARK_CAPTURE(PartOnRealStorage, InsertRaw, &InsertPart, false)->Arg(20)->Arg(200)->Arg(2000);
BENCHMARK_CAPTURE(PartOnRealStorage, UpdateThroughModule, &UpdatePart, true)
    ->Arg(20)
    ->Arg(200)
    ->Arg(2000);
BENCHMARK_CAPTURE(PartOnRealStorage, UpdateRaw, &UpdatePart, false)->Arg(20)->Arg(200)->Arg(2000);

}  // namespace
}  // namespace quillmar::bench
