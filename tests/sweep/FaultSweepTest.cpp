// Every call that leaves the library on a road fails in turn, once and from then on. What is
// reported must be what the procedure says, the calls must be the procedure's, and all protocols
// must be closed again.
#include <algorithm>

#include "FailingCalls.h"
#include "OpenHandles.h"
#include "RoadTest.h"

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

// A host in a process of its own has a journal of its own, and its calls do not fail here.
Procedure ProcedureOf(const Road& road) {
  Procedure procedure = road.procedure();
  if (!kHostSharesTheJournal) {
    std::erase_if(procedure, [](const test::Step& step) { return step.call.starts_with("host "); });
  }
  return procedure;
}

class FaultSweep : public RoadTest, public testing::WithParamInterface<std::tuple<Road, Mode>> {
 protected:
  // Walks the road with that call failing; false when there were fewer.
  bool Walk(const Road& road, int failing, Mode mode) {
    const auto walk = Begin(road);
    fault = {failing, mode};
    strict::Core().Strict_SetVisitor(&CountAndRefuse);
    result = walk();
    strict::Core().Strict_SetVisitor(nullptr);
    calls = Lines();
    reports = Reports();
    if (static_cast<int>(calls.size()) < failing) return false;
    failed = failing == 0 ? "" : calls[static_cast<std::size_t>(failing - 1)];
    // A store that closes nothing any more has them open.
    if (mode == Mode::Once) {
      EXPECT_LE(strict::Core().Strict_OpenProtocols(), failed == "Com_CloseProtocol" ? 1 : 0)
          << failing << " " << failed;
    }
    return true;
  }

  int result = 0;
  std::vector<std::string> calls;
  std::vector<std::string> reports;
  std::string failed;
};

TEST_P(FaultSweep, EveryCallInTurn) {
  const auto& [road, mode] = GetParam();
  ASSERT_TRUE(Walk(road, 0, mode));
  const std::size_t usualReports = reports.size();
  const int handles = OpenHandles();
  const Procedure procedure = road.procedure != nullptr ? ProcedureOf(road) : Procedure();
  for (int failing = 0; Walk(road, failing, mode); ++failing) {
    if (road.procedure == nullptr) {
      EXPECT_TRUE(!failed.starts_with("Com_Put") || reports.size() > usualReports) << failed;
      continue;
    }
    const Expectation expected = Follow(procedure, failing, mode);
    ASSERT_EQ(Text(WithoutRepeats(calls)), Text(WithoutRepeats(expected.calls)))
        << failing << " " << failed;
    ASSERT_EQ(Text(reports), Text(expected.reports)) << failing << " " << failed;
    ASSERT_EQ(result, expected.result) << failing << " " << failed;
  }
  EXPECT_EQ(OpenHandles(), handles);
}

INSTANTIATE_TEST_SUITE_P(Roads, FaultSweep,
                         testing::Combine(testing::ValuesIn(Roads()),
                                          testing::Values(Mode::Once, Mode::FromThenOn)),
                         [](const auto& info) {
                           return std::string(std::get<0>(info.param).name) +
                                  (std::get<1>(info.param) == Mode::Once ? "FailsOnce"
                                                                         : "FailsFromThenOn");
                         });

}  // namespace
}  // namespace quillmar::contract
