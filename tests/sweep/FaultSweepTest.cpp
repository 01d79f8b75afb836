// Every call that leaves the library on a road fails in turn, once and from then on. What is
// reported must be what the procedure says, the calls must be the procedure's, all protocols must
// be closed again, and the process must hold what it held before.
#include <algorithm>
#include <optional>

#include "FailingCalls.h"
#include "HostJournal.h"
#include "LiveBlocks.h"
#include "OpenHandles.h"
#include "RoadTest.h"
#include "platform/Profile.h"

namespace quillmar::contract {
namespace {

using test::Expectation;
using test::Follow;
using test::Mode;
using test::Procedure;

// One to a line, so that a difference is seen.
std::string Text(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// A host that is not ready is asked again and again; that counts as one question.
std::vector<std::string> WithoutRepeats(std::vector<std::string> lines) {
  const auto isRepeat = [](const std::string& left, const std::string& right) {
    return left == right && left == "host 16";
  };
  lines.erase(std::unique(lines.begin(), lines.end(), isRepeat), lines.end());
  return lines;
}

// A host that is not ready any more is waited for, which takes a while on a clock that runs by
// itself: there its calls only fail one by one.
bool HostFails(Mode mode) { return mode == Mode::Once || kClockCanBeSet; }

Procedure ProcedureOf(const Road& road, Mode mode) {
  Procedure procedure = road.procedure();
  if (!HostFails(mode)) {
    std::erase_if(procedure, [](const test::Step& step) { return step.call.starts_with("host "); });
  }
  return procedure;
}

// What came of a road.
struct Outcome {
  int result = 0;
  std::vector<std::string> calls;
  std::vector<std::string> reports;
};

class FaultSweep : public RoadTest, public testing::WithParamInterface<std::tuple<Road, Mode>> {
 protected:
  Outcome Walk(const Road& road, int failing, Mode mode) {
    const auto walk = Begin(road);
    fault = {failing, mode};
    strict::Core().Strict_SetVisitor(&CountAndRefuse);
    const int result = walk();
    strict::Core().Strict_SetVisitor(nullptr);
    return {result, Lines(), Reports()};
  }

  // Walks the road with that call failing, and compares with the table; false when there were fewer
  // calls.
  bool Check(const Road& road, const Procedure& procedure, int failing, Mode mode) {
    const Outcome outcome = Walk(road, failing, mode);
    if (static_cast<int>(outcome.calls.size()) < failing) return false;
    const std::string failed =
        failing == 0 ? "" : outcome.calls[static_cast<std::size_t>(failing - 1)];
    // A store that closes nothing any more has them open.
    if (mode == Mode::Once) {
      EXPECT_LE(strict::Core().Strict_OpenProtocols(), failed == "Com_CloseProtocol" ? 1 : 0)
          << failing << " " << failed;
    }
    const Expectation expected = Follow(procedure, failing, mode);
    EXPECT_EQ(Text(WithoutRepeats(outcome.calls)), Text(WithoutRepeats(expected.calls)))
        << failing << " " << failed;
    EXPECT_EQ(Text(outcome.reports), Text(expected.reports)) << failing << " " << failed;
    EXPECT_EQ(outcome.result, expected.result) << failing << " " << failed;
    return true;
  }

  // The module keeps its newest reports: from then on each one drives out another.
  void FillReports() {
    constexpr int kKeptReports = 10000;
    if (!LiveBlocks()) return;
    platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "0");
    for (int i = 0; i < kKeptReports; ++i) {
      char text[1] = "";
      int size = 1;
      module.GetUnitList("none", text, &size);
      strict::Core().Strict_Reset();
    }
    platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
  }

  // Blocks and handles that the process holds when nothing is left of the road.
  std::pair<long, int> Holdings() {
    host.Forget();
    strict::Core().Strict_Reset();
    return {LiveBlocks().value_or(0), OpenHandles()};
  }
};

TEST_P(FaultSweep, EveryCallInTurn) {
  const auto& [road, mode] = GetParam();
  const Procedure procedure = ProcedureOf(road, mode);
  std::optional<HostJournal> hostJournal;
  if (HostFails(mode)) hostJournal.emplace(host);
  FillReports();
  std::pair<long, int> before;
  for (int failing = 0; Check(road, procedure, failing, mode) && !HasFailure(); ++failing) {
    const auto after = Holdings();
    if (after == before) continue;
    // What is made at the first use stays, a profile file for one; what is lost is lost again.
    Check(road, procedure, failing, mode);
    ASSERT_EQ(Holdings(), after) << failing;
    before = after;
  }
}

INSTANTIATE_TEST_SUITE_P(Roads, FaultSweep,
                         testing::Combine(testing::ValuesIn(Roads()),
                                          testing::Values(Mode::Once, Mode::FromThenOn)),
                         [](const auto& info) {
                           return std::get<0>(info.param).name +
                                  std::string(NameOf(std::get<1>(info.param)));
                         });

}  // namespace
}  // namespace quillmar::contract
