// Every allocation that the library makes fails in turn, once and from then on: the export has its
// failure result, nothing is thrown across it, nothing leaks, and afterwards all works as before.
#include <execinfo.h>

#include "FailingAllocations.h"
#include "OpenHandles.h"
#include "RoadTest.h"

namespace quillmar::contract {
namespace {

std::function<int()> BeginLogin(RoadTest& test) {
  return [&test] {
    int status = 0;
    return test.Module().LoginCad("Strictcad.dll", 17, 1, "models", "prt", "fea", "Sweep", &status);
  };
}

std::function<int()> BeginStart(RoadTest& test) {
  return [&test] {
    test.Module().StartCalculation("shaft", "ISO");
    return 0;
  };
}

std::vector<Road> AllRoads() {
  std::vector<Road> roads = Roads();
  for (const Road& road : RoadsWithoutDialogs()) roads.push_back(road);
  roads.push_back({"Login", BeginLogin});
  roads.push_back({"Start", BeginStart});
  return roads;
}

class AllocationSweep : public RoadTest,
                        public testing::WithParamInterface<std::tuple<Road, bool>> {
 protected:
  // False when nothing failed any more.
  bool Run(const Road& road, int failing, bool fromThenOn) {
    const auto walk = Begin(road);
    allocations = {true, fromThenOn, 0, failing, 0};
    result = walk();
    allocations.armed = false;
    EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0) << allocations.failed;
    return allocations.failed != 0;
  }

  int result = 0;
};

TEST_P(AllocationSweep, EveryAllocationInTurn) {
  const auto& [road, fromThenOn] = GetParam();
  void* first[1];
  ::backtrace(first, 1);  // loads what it needs
  EXPECT_FALSE(Run(road, 0, false));
  const int usualResult = result;
  const int handles = OpenHandles();
  int steps = 0;
  for (int failing = 1; Run(road, failing, fromThenOn); ++steps) {
    EXPECT_THAT(result, testing::AnyOf(0, usualResult)) << allocations.failed;
    failing = allocations.failed + 1;
  }
  EXPECT_GT(steps, 10);
  EXPECT_EQ(OpenHandles(), handles);
  EXPECT_FALSE(Run(road, 0, false));
  EXPECT_EQ(result, usualResult);
}

INSTANTIATE_TEST_SUITE_P(Exports, AllocationSweep,
                         testing::Combine(testing::ValuesIn(AllRoads()), testing::Bool()),
                         [](const auto& info) {
                           return std::string(std::get<0>(info.param).name) +
                                  (std::get<1>(info.param) ? "FromThenOn" : "Once");
                         });

}  // namespace
}  // namespace quillmar::contract
