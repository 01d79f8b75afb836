// Shaft protocols between their layouts, on companions that return at once.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "InstantCompanions.h"
#include "ModuleWorld.h"
#include "conversion/LayoutConverter.h"

namespace quillmar::bench {
namespace {

std::string elementCount;

// A shaft of keyways with two supports and two loads.
short QM_STDCALL ShaftParam(const char*, const char* name, char* value, char* unit) {
  const bool isCount = std::strcmp(name, "ElNum") == 0 || std::strcmp(name, "#spiCount") == 0;
  std::strcpy(value, isCount ? elementCount.c_str() : "2.5");
  std::strcpy(unit, "mm");
  return 1;
}

void Convert(benchmark::State& state, int fromMajor, int toMajor) {
  const TemporaryMachine machine;
  StorageTable storage = InstantStorage({});
  storage.Com_GetDataParam.pointer = &ShaftParam;
  const ModuleWorld world(storage, InstantLinks(), InstantDriver());
  ViewKeyMapping mapping;
  const ProtocolConverter controller("Bench", "C:\\none.ini", mapping);
  LayoutConverter::Protocols furtherViews;
  elementCount = std::to_string(state.range(0));
  VXProtocol protocol(world.Protocols(), "P0000001");
  for (auto step : state) {
    MakeLayoutConverter("SHAFT", protocol, controller, furtherViews)
        ->Convert(fromMajor, toMajor, 0, 0);
  }
  state.SetComplexityN(state.range(0));
}

void ShaftUp(benchmark::State& state) { Convert(state, 1, 2); }
BENCHMARK(ShaftUp)->RangeMultiplier(10)->Range(10, 1000)->Complexity(benchmark::oN);

void ShaftDown(benchmark::State& state) { Convert(state, 2, 1); }
BENCHMARK(ShaftDown)->RangeMultiplier(10)->Range(10, 1000)->Complexity(benchmark::oN);

}  // namespace
}  // namespace quillmar::bench
