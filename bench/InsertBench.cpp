// Insert and update of a parametric part: the module alone, and on the real storage library beside
// the same library calls made again without the module.
#include <benchmark/benchmark.h>

#include <memory>
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

// A road of a protocol that stays open.
void PartOnRealStorage(benchmark::State& state, Road road, bool throughModule) {
  const auto prepare = [&](const ModuleWorld& world) -> Work {
    const std::string id = MakeGear(world, static_cast<int>(state.range(0)));
    return [road, id](const ModuleWorld& on) -> Step {
      const auto protocol = std::make_shared<VXProtocol>(on.Protocols(), id);
      return [road, &on, protocol] { road(on.Services(), *protocol); };
    };
  };
  OnRealStorage(state, prepare, InstantDriver(), throughModule);
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
