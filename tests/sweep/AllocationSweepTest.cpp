// Every allocation that the library makes fails in turn, once and from then on: the export has its
// failure result, nothing is thrown across it, nothing leaks, and afterwards all works as before.
#include <execinfo.h>

#include "FailingAllocations.h"
#include "RoadTest.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

struct Work {
  const char* name;
  int (*run)(const Exports& module, const std::string& id);
};

int Handle(const Exports&, const std::string&) {
  platform::PumpMessages();
  return 0;
}

const Work kWorks[] = {
    {"Insert", Handle},
    {"Update", Handle},
    {"Login",
     [](const Exports& module, const std::string&) {
       int status = 0;
       return module.LoginCad("Strictcad.dll", 17, 1, "models", "prt", "fea", "Sweep", &status);
     }},
    {"Start",
     [](const Exports& module, const std::string&) {
       module.StartCalculation("shaft", "ISO");
       return 0;
     }},
    {"Obtain",
     [](const Exports& module, const std::string&) { return module.ObtainProtocol("Shaft:1"); }}};

class AllocationSweep : public RoadTest,
                        public testing::WithParamInterface<std::tuple<Work, bool>> {
 protected:
  // False when nothing failed any more.
  bool Run(const Work& work, int failing, bool fromThenOn) {
    // The guarded memory of the companions is limited.
    EXPECT_EQ(strict::Core().Strict_ViolationCount(), 0);
    strict::Core().Strict_Reset();
    ForgetCalls();
    const std::string id = MakeShaft();
    const std::string reference = Record(id).Reference();
    strict::Core().Strict_SetAnswer("GetProtocol.text", reference.c_str());
    if (work.run == Handle) {
      Announce(work.name == std::string("Insert") ? QM_CALLBACK_NEW_PART : QM_CALLBACK_RECALCULATED,
               id);
    }
    allocations = {true, fromThenOn, 0, failing, 0};
    work.run(module, id);
    allocations.armed = false;
    EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0) << allocations.failed;
    Erase(id);
    return allocations.failed != 0;
  }
};

TEST_P(AllocationSweep, EveryAllocationInTurn) {
  const auto& [work, fromThenOn] = GetParam();
  void* first[1];
  ::backtrace(first, 1);  // loads what it needs
  int steps = 0;
  for (int failing = 1; Run(work, failing, fromThenOn); ++steps) failing = allocations.failed + 1;
  EXPECT_GT(steps, 10);
  EXPECT_FALSE(Run(work, 0, false));
  const std::string id = MakeShaft();
  host.Finish(QM_CALLBACK_NEW_PART, id);
  EXPECT_THAT(Calls("InsertShaft"), SizeIs(testing::Ge(1u)));
}

INSTANTIATE_TEST_SUITE_P(Exports, AllocationSweep,
                         testing::Combine(testing::ValuesIn(kWorks), testing::Bool()),
                         [](const auto& info) {
                           return std::string(std::get<0>(info.param).name) +
                                  (std::get<1>(info.param) ? "FromThenOn" : "Once");
                         });

}  // namespace
}  // namespace quillmar::contract
