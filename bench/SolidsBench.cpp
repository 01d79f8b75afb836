// Solids of each kind: building with check and weighing, and each of the files.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <string>

#include "drawboard/native/occt/Solid.h"

namespace quillmar::bench {
namespace {

using namespace drawboard;

Design DesignOf(const std::string& model, const std::string& parameters) {
  PartDescription part;
  part.model = model;
  part.parameters = ParseParameters("*view*,V," + parameters).parameters;
  part.featureStates = {{"EndChamfers", "1"}, {"PointChamfer", "1"}};
  return ReadDesign(part);
}

Design Gear(int teeth) {
  return DesignOf("spurgear", "m,2.5,x,0.2,b,30,dh,30,z," + std::to_string(teeth));
}

Design Cam(int points) {
  std::string text = "b,20,dh,25,cPoint," + std::to_string(points);
  for (int i = 1; i <= points; ++i) {
    const double angle = 2 * std::numbers::pi * i / points;
    const std::string row = "_" + std::to_string(i) + ",";
    text += ",a" + row + FormatNumber(360.0 * i / points) + ",l" + row +
            FormatNumber(50 + 10 * std::cos(angle));
  }
  return DesignOf("disccam", text);
}

struct Case {
  const char* name;
  Design design;
};

const Case& CaseOf(const benchmark::State& state) {
  static const Case cases[] = {
      {"gear z=24", Gear(24)},
      {"gear z=100", Gear(100)},
      {"gear z=300", Gear(300)},
      {"shaft, keyway",
       DesignOf("shaft",
                "d_1,20,l_1,45,d_2,30,l_2,60,d_3,25,l_3,17,d_4,20,l_4,30,#spiType_2,3,"
                "KEY_LR_2,10,KEY_L_2,40,KEY_B_2,8,KEY_T_2,4")},
      {"cam, 360 points", Cam(360)},
      {"bolt", DesignOf("hexbolt", "d_1,18.9,l_1,7.8,d_2,12,l_2,60")},
      {"nut", DesignOf("hexnut", "d_1,18.9,l_1,10.8,dh,12")},
      {"washer", DesignOf("washer", "d_1,24,l_1,2.5,dh,13")},
  };
  return cases[state.range(0)];
}

constexpr int kLastCase = 7;

void BuildSolidAndWeigh(benchmark::State& state) {
  const Case& each = CaseOf(state);
  for (auto step : state) benchmark::DoNotOptimize(BuildSolid(each.design));
  state.SetLabel(each.name);
}
BENCHMARK(BuildSolidAndWeigh)->DenseRange(0, kLastCase)->Unit(benchmark::kMillisecond);

// Runs one step on the solid of a case; each time on a new one, which has no triangles yet.
template <typename Step>
void RunOnSolid(benchmark::State& state, Step step) {
  const Case& each = CaseOf(state);
  std::size_t bytes = 0;
  for (auto iteration : state) {
    state.PauseTiming();
    const TopoDS_Solid solid = BuildSolid(each.design).shape;
    state.ResumeTiming();
    bytes = step(solid, each);
  }
  state.SetLabel(each.name);
  state.counters["kB"] = static_cast<double>(bytes) / 1000;
}

void WriteStep(benchmark::State& state) {
  RunOnSolid(state, [](const TopoDS_Solid& solid, const Case& each) {
    return StepOf(solid, each.design, each.name).size();
  });
}
BENCHMARK(WriteStep)->DenseRange(0, kLastCase)->Unit(benchmark::kMillisecond);

void WriteGlb(benchmark::State& state) {
  RunOnSolid(state, [](const TopoDS_Solid& solid, const Case& each) {
    return GlbOf(solid, each.design, each.name).size();
  });
}
BENCHMARK(WriteGlb)->DenseRange(0, kLastCase)->Unit(benchmark::kMillisecond);

void DrawSvg(benchmark::State& state) {
  RunOnSolid(state, [](const TopoDS_Solid& solid, const Case& each) {
    return SvgOf(solid, each.name).size();
  });
}
BENCHMARK(DrawSvg)->DenseRange(0, kLastCase)->Unit(benchmark::kMillisecond);

// What the other kernel, and so the Windows target, does instead.
void WeighShaftByFormulas(benchmark::State& state) {
  PartDescription part;
  part.model = "shaft";
  part.parameters = ParseParameters(
                        "*view*,V,d_1,20,l_1,45,d_2,30,l_2,60,d_3,25,l_3,17,#spiType_2,3,"
                        "KEY_LR_2,10,KEY_L_2,40,KEY_B_2,8,KEY_T_2,4")
                        .parameters;
  const auto kernel = MakeFormulaKernel();
  for (auto step : state) benchmark::DoNotOptimize(kernel->Weigh(part));
}
BENCHMARK(WeighShaftByFormulas)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmar::bench
