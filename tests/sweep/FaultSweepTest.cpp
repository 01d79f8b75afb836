// Every call that leaves the library on a road fails in turn, once and from then on. What is
// reported must be what the procedure says, the calls must be the procedure's, and the protocol
// must be closed again.
#include <algorithm>

#include "OpenHandles.h"
#include "RoadTest.h"
#include "Roads.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

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

// Failures after which the store itself still counts the protocol as open: it did not close, or
// was made to deny the protocol and had to open it a second time.
bool LeavesItOpen(const std::string& failedCall, Mode mode) {
  return mode == Mode::FromThenOn || failedCall == "Com_CloseProtocol" ||
         failedCall == "Com_IsProtocolExists";
}

// The call that fails, counted from 1; 0: none.
struct Fault {
  int number = 0;
  Mode mode = Mode::Once;
  int calls = 0;
} fault;

int QM_CDECL CountAndRefuse(const char* function) {
  ++fault.calls;
  if (fault.number == 0) return 0;
  if (fault.mode == Mode::Once) return fault.calls == fault.number ? 1 : 0;
  if (fault.calls < fault.number) return 0;
  if (function == std::string_view("host 16")) EndWait();
  return 1;
}

// A host in a process of its own has a journal of its own, and its calls do not fail here.
Procedure ProcedureOf(int code) {
  Procedure procedure = test::ShaftCallback(code);
  if (!kHostSharesTheJournal) {
    std::erase_if(procedure, [](const test::Step& step) { return step.call.starts_with("host "); });
  }
  return procedure;
}

struct Road {
  const char* name;
  int code;
};

class FaultSweep : public RoadTest, public testing::WithParamInterface<std::tuple<Road, Mode>> {
 protected:
  // Walks the road with that call failing.
  void Walk(int code, const std::string& id, int failing, Mode mode) {
    Announce(code, id);
    fault = {failing, mode};
    strict::Core().Strict_SetVisitor(&CountAndRefuse);
    platform::PumpMessages();
    strict::Core().Strict_SetVisitor(nullptr);
  }
};

TEST_P(FaultSweep, EveryCallInTurn) {
  const auto& [road, mode] = GetParam();
  const Procedure procedure = ProcedureOf(road.code);
  const int count = static_cast<int>(Follow(procedure, 0, mode).calls.size());
  int handles = 0;
  for (int failing = 0; failing <= count; ++failing) {
    const std::string id = MakeShaft();
    Walk(road.code, id, failing, mode);
    const std::vector<std::string> calls = Lines();
    ASSERT_GE(static_cast<int>(calls.size()), failing);
    const std::string failed = failing == 0 ? "" : calls[static_cast<std::size_t>(failing - 1)];

    // Without its code the host's message asks for no CAD action.
    const bool codeLost = failed == "host 3" && mode == Mode::Once;
    const Expectation expected =
        codeLost ? Follow(ProcedureOf(0), 0, mode) : Follow(procedure, failing, mode);
    ASSERT_EQ(Text(WithoutRepeats(calls)), Text(WithoutRepeats(expected.calls)))
        << failing << " " << failed;
    ASSERT_EQ(Text(Reports()), Text(expected.reports)) << failing << " " << failed;
    EXPECT_TRUE(StateOf(id) == QM_PROTOCOL_CLOSED || LeavesItOpen(failed, mode))
        << failing << " " << failed;
    Erase(id);
    EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0) << failing << " " << failed;
    if (failing == 0) handles = OpenHandles();
  }
  EXPECT_EQ(OpenHandles(), handles);
}

INSTANTIATE_TEST_SUITE_P(Roads, FaultSweep,
                         testing::Combine(testing::Values(Road{"Insert", QM_CALLBACK_NEW_PART},
                                                          Road{"Update", QM_CALLBACK_RECALCULATED},
                                                          Road{"OtherCode", 151}),
                                          testing::Values(Mode::Once, Mode::FromThenOn)),
                         [](const auto& info) {
                           return std::string(std::get<0>(info.param).name) +
                                  (std::get<1>(info.param) == Mode::Once ? "FailsOnce"
                                                                         : "FailsFromThenOn");
                         });

}  // namespace
}  // namespace quillmar::contract
